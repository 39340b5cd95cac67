package io.terncorekit;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertInstanceOf;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.file.Path;
import java.util.List;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.ExecutionException;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.RejectedExecutionException;
import java.util.stream.Collectors;
import java.util.stream.Stream;
import org.junit.jupiter.api.AfterAll;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.io.TempDir;

/** Venues from a mapping service: that of the command, on this machine. */
@Timeout(120)
class HubTest {
  static Plaza.Service service;
  @TempDir Path folder;

  @BeforeAll
  static void serve() throws Exception {
    service = new Plaza.Service();
  }

  @AfterAll
  static void stop() {
    service.close();
  }

  Hub.Settings settings() {
    return service.settings().cacheFolder(folder);
  }

  static TernException errorOf(CompletableFuture<?> future) {
    ExecutionException thrown = assertThrows(ExecutionException.class, () -> Plaza.taken(future));
    return assertInstanceOf(TernException.class, thrown.getCause());
  }

  @Test
  void listsAndLoads() throws Exception {
    Venue venue;
    try (Hub hub = new Hub(settings().locale("en-US").geoJson(false).autoReload(true))) {
      List<VenueName> names = Plaza.taken(hub.venues());
      assertEquals(1, names.size());
      assertEquals(1, names.get(0).id);
      assertEquals("venue-1", names.get(0).externalId);
      assertEquals("Linden Plaza", names.get(0).toString());
      venue = Plaza.taken(hub.load(1));
    }
    try (venue; Venue plaza = Plaza.open()) {
      assertEquals(plaza.answer(Plaza.ROUTE), venue.answer(Plaza.ROUTE));
    }
  }

  @Test
  void loadsAreHandedOverOnTheThreadThatIsNamed() throws Exception {
    ExecutorService main =
        Executors.newSingleThreadExecutor(work -> new Thread(work, "main of it"));
    try (Hub hub = new Hub(settings().executor(main))) {
      CompletableFuture<String> loaded = hub.load().thenApply(venue -> {
        venue.close();
        return Thread.currentThread().getName();
      });
      CompletableFuture<String> failed =
          hub.load(99).handle((venue, error) -> Thread.currentThread().getName());
      assertEquals("main of it", Plaza.taken(loaded));
      assertEquals("main of it", Plaza.taken(failed));
    } finally {
      main.shutdown();
    }
  }

  @Test
  void loadsFollowEachOther() throws Exception {
    try (Hub hub = new Hub(settings()); Venue plaza = Plaza.open()) {
      List<CompletableFuture<Venue>> loads =
          Stream.generate(() -> hub.load()).limit(4).collect(Collectors.toList());
      for (CompletableFuture<Venue> each : loads) {
        try (Venue venue = Plaza.taken(each)) {
          assertEquals(plaza.answer(Plaza.ROUTE), venue.answer(Plaza.ROUTE));
        }
      }
    }
  }

  @Test
  void anExecutorThatRefusesIsTheReason() {
    ExecutorService gone = Executors.newSingleThreadExecutor();
    gone.shutdown();
    try (Hub hub = new Hub(settings().executor(gone))) {
      ExecutionException thrown =
          assertThrows(ExecutionException.class, () -> Plaza.taken(hub.load()));
      assertInstanceOf(RejectedExecutionException.class, thrown.getCause());
    }
  }

  @Test
  void aLoadThatWasCancelledClosesItsVenue() throws Exception {
    CompletableFuture<Runnable> handed = new CompletableFuture<>();
    try (Hub hub = new Hub(settings().executor(handed::complete))) {
      CompletableFuture<Venue> load = hub.load();
      Runnable work = Plaza.taken(handed);
      load.cancel(true);
      work.run();
      assertTrue(load.isCancelled());
      Plaza.taken(new Hub(settings()).load()).close();
    }
  }

  @Test
  void whatIsNotThereFails() {
    try (Hub hub = new Hub(settings())) {
      errorOf(hub.load(99));
    }
    try (Hub hub =
             new Hub(new Hub.Settings("http://127.0.0.1:9", 1, "a", "b").cacheFolder(folder))) {
      errorOf(hub.load());
      errorOf(hub.venues());
    }
    try (Hub hub =
             new Hub(new Hub.Settings(service.address, 1, "local", "wrong").cacheFolder(folder))) {
      errorOf(hub.load());
    }
  }

  @Test
  void aClosedHubThrows() {
    Hub hub = new Hub(settings());
    hub.close();
    hub.close();
    assertTrue(hub.isClosed());
    TernException error = assertThrows(TernException.class, () -> hub.load());
    assertEquals("TN006", error.code);
    assertThrows(TernException.class, hub::venues);
  }

  @Test
  void settingsThatMeanNothingThrow() {
    assertThrows(TernException.class, () -> new Hub(new Hub.Settings("", 1, "a", "b")));
    assertThrows(NullPointerException.class, () -> new Hub(null));
    assertThrows(NullPointerException.class, () -> new Hub.Settings(null, 1, "a", "b"));
    assertThrows(NullPointerException.class, () -> new Hub.Settings("http://x", 1, "a", null));
    assertThrows(NullPointerException.class, () -> settings().executor(null));
    assertThrows(NullPointerException.class, () -> settings().cacheFolder(null));
    assertThrows(IllegalArgumentException.class, () -> new Hub(settings().locale("\0\ud800")));
  }
}
