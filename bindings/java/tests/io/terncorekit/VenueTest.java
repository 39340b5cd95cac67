package io.terncorekit;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.net.URI;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import java.util.stream.Stream;
import org.junit.jupiter.api.AfterAll;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.io.TempDir;

/** Venues: from where they come, how they are asked, and how they go. */
@Timeout(120)
class VenueTest {
  static Venue shared;

  @BeforeAll
  static void open() {
    shared = Plaza.open();
  }

  @AfterAll
  static void close() {
    shared.close();
  }

  @Test
  void opensTheVenuesThatAreNamed() {
    try (Venue venue = Venue.open(Plaza.FOLDER.toAbsolutePath(), 1)) {
      assertEquals(shared.answer(Plaza.ROUTE), venue.answer(Plaza.ROUTE));
      assertTrue(Venue.libraryVersion().matches("\\d+\\.\\d+\\.\\d+"));
    }
  }

  @Test
  void opensDocuments() {
    try (Venue venue = Venue.fromDocuments(Plaza::read, 1)) {
      assertEquals(shared.answer(Plaza.ROUTE), venue.answer(Plaza.ROUTE));
    }
  }

  @Test
  void namesTheDocumentThatIsMissing() {
    String missing = "venue/1/building/2/full.json";
    TernException error = assertThrows(TernException.class,
        () -> Venue.fromDocuments(path -> path.equals(missing) ? null : Plaza.read(path)));
    assertEquals("TN007", error.code);
    assertEquals(missing + ": was not given", error.getMessage());
    assertFalse(error.description.isEmpty());
  }

  @Test
  void whatTheFunctionThrowsComesOut() {
    List<Throwable> failures =
        List.of(new IllegalStateException(), new AssertionError(), new IOException());
    for (Throwable failure : failures) {
      for (int number : new int[] {0, 2}) {
        AtomicInteger calls = new AtomicInteger();
        Throwable thrown = assertThrows(failure.getClass(), () -> Venue.fromDocuments(path -> {
          if (calls.getAndIncrement() == number) {
            VenueTest.<RuntimeException>sneak(failure);
          }
          return Plaza.read(path);
        }));
        assertSame(failure, thrown);
        assertEquals(number + 1, calls.get());
      }
    }
  }

  @SuppressWarnings("unchecked")
  private static <E extends Throwable> void sneak(Throwable thrown) throws E {
    throw (E) thrown;
  }

  @Test
  void brokenDocumentsThrow() {
    new Host().log(line -> {}).use();
    for (String broken :
        List.of("", "{", "\u00ff\u00fe\0", "[]", "[".repeat(100_000), "{\"venues\":7}")) {
      byte[] document = broken.getBytes(StandardCharsets.ISO_8859_1);
      assertThrows(TernException.class, () -> Venue.fromDocuments(path -> document));
    }
    new Host().use();
  }

  @Test
  void aFunctionMayOpenAnotherVenue() {
    try (Venue venue = Venue.fromDocuments(path -> {
      try (Venue inner = Plaza.open()) {
        assertEquals(shared.answer(Plaza.ROUTE), inner.answer(Plaza.ROUTE));
      }
      return Plaza.read(path);
    })) {
      assertEquals(shared.answer(Plaza.ROUTE), venue.answer(Plaza.ROUTE));
    }
  }

  @Test
  void joinedVenuesAreOne(@TempDir Path folder) throws Exception {
    Process made = new ProcessBuilder(Plaza.TERN, "generate", "--out",
        folder.resolve("v").toString(), "--venues", "2", "--shops", "10")
                       .start();
    assertEquals(0, made.waitFor());
    long[] ids;
    try (Stream<Path> venues = Files.list(folder.resolve("v/venue"))) {
      ids = venues.mapToLong(each -> Long.parseLong(each.getFileName().toString()))
                .sorted()
                .toArray();
    }
    try (Venue venue = Venue.open(folder.resolve("v"), ids)) {
      assertThrows(TernException.class, () -> Venue.open(folder.resolve("v"), ids));
      assertThrows(TernException.class, () -> venue.places(""));
      long first = venue.places("", Options.NONE.venue(ids[0])).get(0).waypoints.get(0);
      long second = venue.places("", Options.NONE.venue(ids[1])).get(0).waypoints.get(0);
      assertFalse(venue.route(first, second).isEmpty());
      Options ofFirst = Options.NONE.venue(ids[0]);
      assertFalse(venue.reach(List.of(first), 5, ofFirst).isEmpty());
    }
  }

  @Test
  void wrongFoldersThrow(@TempDir Path empty) {
    for (Path path : List.of(empty, empty.resolve("none"), Path.of("/dev/null"), Path.of(""),
             Path.of("data/plaza/full.json"))) {
      assertThrows(TernException.class, () -> Venue.open(path), path.toString());
    }
    for (long[] venues : new long[][] {{99}, {1, 1}, {-1}, {Long.MAX_VALUE}}) {
      assertThrows(TernException.class, () -> Venue.open(Plaza.FOLDER, venues));
    }
  }

  @Test
  void aFolderWithinAFileThrows() {
    Path module = Path.of(URI.create("jrt:/java.base"));
    assertThrows(UnsupportedOperationException.class, () -> Venue.open(module));
  }

  @Test
  void nullThrows() {
    assertThrows(NullPointerException.class, () -> Venue.open(null));
    assertThrows(NullPointerException.class, () -> Venue.open(Plaza.FOLDER, (long[]) null));
    assertThrows(NullPointerException.class, () -> Venue.fromDocuments(null));
    assertThrows(NullPointerException.class, () -> shared.answer(null));
    assertThrows(NullPointerException.class, () -> shared.ask(null));
    assertThrows(NullPointerException.class, () -> shared.route(1, 2, null));
    assertThrows(NullPointerException.class, () -> shared.routeToAny(1, null));
    assertThrows(
        NullPointerException.class, () -> shared.routeToAny(1, Collections.singleton(null)));
    assertThrows(NullPointerException.class, () -> shared.nearest((Spot) null, null));
    assertThrows(NullPointerException.class, () -> shared.nearest(1, (Element) null));
    assertThrows(NullPointerException.class, () -> shared.places(null));
    assertThrows(NullPointerException.class, () -> Options.NONE.language(null));
  }

  @Test
  void textsThatCannotBeGivenThrow() {
    for (String wrong : List.of("\0", "{\"op\":\"\ud800\"}", "\udc00", "\ud800x", "\ud800")) {
      assertThrows(IllegalArgumentException.class, () -> shared.answer(wrong));
      assertThrows(IllegalArgumentException.class, () -> shared.places(wrong + "\ud800"));
      assertThrows(IllegalArgumentException.class,
          () -> shared.directions(1, 2, Options.NONE.language(wrong + "\ud800")));
    }
    assertThrows(IllegalArgumentException.class, () -> shared.reach(22001, Double.NaN));
    assertThrows(IllegalArgumentException.class,
        () -> shared.nearest(new Spot(22, Double.POSITIVE_INFINITY, 0), Element.amenity(2)));
  }

  @Test
  void textsBeyondTheFirstPlaneAreGivenAndTaken() {
    byte[] full = new String(Plaza.read("venue/1/building/1/full.json"), StandardCharsets.UTF_8)
                      .replaceFirst("Everly Toys", "\ud83e\uddf8 \u00c9clair")
                      .getBytes(StandardCharsets.UTF_8);
    try (Venue venue = Venue.fromDocuments(
             path -> path.equals("venue/1/building/1/full.json") ? full : Plaza.read(path))) {
      assertFalse(venue.places("").isEmpty());
      assertTrue(shared.places("\ud83e\uddf8").isEmpty());
    }
  }

  @Test
  void requestsThatMeanNothingAreAnsweredSo() {
    for (String text : List.of("", "{", "[]", "7", "{\"op\":7}", "{\"op\":\"route\"}",
             "[".repeat(100_000), "\ufffe")) {
      String answer = shared.answer(text);
      assertTrue(answer.startsWith("{\"error\":{\"code\":\"TN006\""), answer);
    }
    assertThrows(TernException.class, () -> shared.ask(Map.of("op", "none")));
    assertThrows(TernException.class, () -> shared.nearest(22001));
  }

  @Test
  void idsAtTheEdgesAreAnswered() {
    for (long edge : new long[] {0, -1, 1L << 31, Long.MAX_VALUE, Long.MIN_VALUE}) {
      assertTrue(shared.route(edge, edge < 0 ? edge + 1 : edge - 1).isEmpty());
    }
  }

  @Test
  void aClosedVenueThrows() {
    Venue venue = Plaza.open();
    assertFalse(venue.isClosed());
    venue.close();
    venue.close();
    assertTrue(venue.isClosed());
    TernException error = assertThrows(TernException.class, () -> venue.route(22001, 14016));
    assertEquals("TN006", error.code);
    assertThrows(TernException.class, () -> venue.answer(Plaza.ROUTE));
    assertThrows(TernException.class, () -> venue.matrix(List.of(), List.of()));
  }

  @Test
  void threadsAskOneVenueAtOnce() {
    List<String> requests = IntStream.range(0, 2000)
                                .mapToObj(i
                                    -> "{\"op\":\"route\",\"from\":" + (12001 + i % 20)
                                        + ",\"to\":" + (14001 + i % 30) + "}")
                                .collect(Collectors.toList());
    List<String> expected = requests.stream().map(shared::answer).collect(Collectors.toList());
    assertEquals(
        expected, requests.parallelStream().map(shared::answer).collect(Collectors.toList()));
  }

  @Test
  void closingWhileOthersAskEndsInAnswersOrErrors() throws Exception {
    Venue venue = Plaza.open();
    String expected = venue.answer(Plaza.ROUTE);
    AtomicInteger answers = new AtomicInteger();
    List<String> ends = Collections.synchronizedList(new ArrayList<>());
    List<Thread> threads = new ArrayList<>();
    for (int i = 0; i < 3; ++i) {
      Thread thread = new Thread(() -> {
        try {
          while (venue.answer(Plaza.ROUTE).equals(expected)) {
            answers.incrementAndGet();
          }
          ends.add("another answer");
        } catch (TernException error) {
          ends.add(error.code);
        }
      });
      threads.add(thread);
      thread.start();
    }
    Plaza.await("they ask", () -> answers.get() > 30);
    venue.close();
    for (Thread thread : threads) {
      thread.join();
    }
    assertEquals(List.of("TN006", "TN006", "TN006"), ends);
  }
}
