package io.terncorekit;

import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.lang.management.ManagementFactory;
import java.lang.ref.WeakReference;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import javax.management.ObjectName;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.io.TempDir;

/**
 * Nothing is left of what was closed, let go or refused: no memory, and no reference of the JNI.
 */
@Timeout(120)
class LeakTest {
  static final long MOST_BYTES = 24L << 20;

  /** Resident bytes. */
  static long memory() throws Exception {
    System.gc();
    String pages = Files.readString(Path.of("/proc/self/statm")).split(" ")[1];
    return Long.parseLong(pages) * 4096;
  }

  /** How many objects the JNI keeps. */
  static int references() throws Exception {
    System.gc();
    Object said = ManagementFactory.getPlatformMBeanServer().invoke(
        new ObjectName("com.sun.management:type=DiagnosticCommand"), "threadPrint",
        new Object[] {new String[0]}, new String[] {String[].class.getName()});
    Matcher found = Pattern.compile("JNI global refs: (\\d+)").matcher(said.toString());
    assertTrue(found.find());
    return Integer.parseInt(found.group(1));
  }

  interface Work {
    void run() throws Exception;
  }

  /** The same work again and again, after so much of it that pools and caches are full. */
  static void assertKeepsNothing(int times, Work work) throws Exception {
    for (int i = 0; i < times; ++i) {
      work.run();
    }
    long before = memory();
    int referencesBefore = references();
    for (int i = 0; i < times; ++i) {
      work.run();
    }
    // The machine's own threads come and go.
    int more = references() - referencesBefore;
    assertTrue(more < 10, more + " references were kept");
    long grown = memory() - before;
    assertTrue(grown < MOST_BYTES, grown + " bytes were kept");
  }

  @AfterEach
  void ownAgain() {
    new Host().use();
  }

  @Test
  void venuesThatAreClosed() throws Exception {
    assertKeepsNothing(300, () -> {
      try (Venue venue = Plaza.open()) {
        venue.route(22001, 14016);
      }
    });
  }

  @Test
  void venuesOfDocuments() throws Exception {
    assertKeepsNothing(200, () -> Venue.fromDocuments(Plaza::read).close());
  }

  @Test
  void venuesThatNobodyCloses() throws Exception {
    assertKeepsNothing(20, () -> {
      for (int i = 0; i < 10; ++i) {
        Plaza.open();
      }
      System.gc();
    });
  }

  @Test
  void answersAndErrors() throws Exception {
    String large = "{\"op\":\"reach\",\"from\":22001,\"metres\":1000}";
    try (Venue venue = Plaza.open()) {
      assertKeepsNothing(2000, () -> {
        venue.answer(large);
        venue.answer("{");
        assertThrows(TernException.class, () -> venue.nearest(22001));
      });
    }
  }

  @Test
  void whatCannotBeOpened() throws Exception {
    Path none = Path.of("x".repeat(20_000)); // which the error names
    assertKeepsNothing(3000, () -> {
      assertThrows(TernException.class, () -> Venue.open(none));
      assertThrows(TernException.class, () -> Venue.fromDocuments(path -> null));
      assertThrows(IllegalStateException.class,
          () -> Venue.fromDocuments(path -> { throw new IllegalStateException(); }));
    });
  }

  @Test
  void hubsAndLoads(@TempDir Path folder) throws Exception {
    try (Plaza.Service service = new Plaza.Service()) {
      assertKeepsNothing(40, () -> {
        try (Hub hub = new Hub(service.settings().cacheFolder(folder))) {
          Plaza.taken(hub.load()).close();
          Plaza.taken(hub.venues());
          assertThrows(Exception.class, () -> Plaza.taken(hub.load(99)));
        }
      });
    }
  }

  @Test
  void hostsThatAreReplaced() throws Exception {
    assertKeepsNothing(3000, () -> {
      new Host().log(line -> {}).use();
      new Host().http(request -> null).use();
    });
  }

  @Test
  void aHostThatIsReplacedIsLetGo() throws Exception {
    WeakReference<Object> host = hostOfNewObject();
    System.gc();
    assertNotNull(host.get());
    new Host().use();
    Plaza.await("it is let go", () -> {
      System.gc();
      return host.get() == null;
    });
  }

  private static WeakReference<Object> hostOfNewObject() {
    Object kept = new Object();
    new Host().log(line -> kept.hashCode()).use();
    return new WeakReference<>(kept);
  }

  @Test
  void aVenueThatNobodyClosesIsClosedOnceItWasCollected() throws Exception {
    List<Handle> handles = new ArrayList<>();
    handles.add(new Handle(new Object(), 0, number -> {}));
    Plaza.await("it is closed", () -> {
      System.gc();
      Handle.closeCollected();
      return handles.get(0).isClosed();
    });
  }
}
