import com.sun.management.OperatingSystemMXBean;
import io.terncorekit.Place;
import io.terncorekit.Reached;
import io.terncorekit.Venue;
import java.io.IOException;
import java.lang.management.ManagementFactory;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import java.util.function.Supplier;

/**
 * Prints how long Java takes beside C for the same questions, in turns: seconds of the processor,
 * those of the machine's own threads among them.
 *
 * <p>Measure ASK SAMPLE MALL WAYPOINTS: a program that asks by C, and two venue folders
 */
final class Measure {
  private static final int ROUNDS = 9;
  private static final OperatingSystemMXBean SYSTEM =
      (OperatingSystemMXBean) ManagementFactory.getOperatingSystemMXBean();

  private final String ask;
  private final String folder;
  private final String name;
  /** What is made of an answer is seen, so that no compiler leaves it out. */
  private static int seen;

  private Measure(String ask, String folder, String name) {
    this.ask = ask;
    this.folder = folder;
    this.name = name;
  }

  public static void main(String[] words) throws Exception {
    Measure sample = new Measure(words[0], words[1], "sample");
    sample.routes(22001, 14016, 4000);
    sample.places("coral", 4000);
    Measure mall = new Measure(words[0], words[2], words[3] + " waypoints");
    try (Venue venue = Venue.open(Path.of(words[2]))) {
      List<Place> places = venue.places("");
      List<Reached> reached = venue.reach(places.get(0).waypoints.get(0), 1e6);
      mall.routes(reached.get(0).waypoint, reached.get(reached.size() / 2).waypoint, 400);
      mall.places(places.get(places.size() / 2).name.substring(0, 5), 2000);
    }
    if (seen == 0) {
      throw new IllegalStateException("nothing was answered");
    }
  }

  private void routes(long start, long goal, int times) throws Exception {
    String request = "{\"op\":\"route\",\"from\":" + start + ",\"to\":" + goal + "}";
    try (Venue venue = Venue.open(Path.of(folder))) {
      told("route", request, times, () -> venue.route(start, goal).segments.size());
      told("answer, a route", request, times, () -> venue.answer(request).length());
    }
  }

  private void places(String text, int times) throws Exception {
    String request = "{\"op\":\"places\",\"text\":\"" + text + "\"}";
    try (Venue venue = Venue.open(Path.of(folder))) {
      told("places", request, times, () -> venue.places(text).size());
      told("answer, places", request, times, () -> venue.answer(request).length());
    }
  }

  /** A line for the rounds; one before them lets the machine compile what it runs. */
  private void told(String what, String request, int times, Supplier<Integer> work)
      throws Exception {
    microseconds(work, times);
    double[] ours = new double[ROUNDS];
    double[] peers = new double[ROUNDS];
    double[] ratios = new double[ROUNDS];
    for (int i = 0; i < ROUNDS; ++i) {
      ours[i] = microseconds(work, times);
      peers[i] = byC(request, times);
      ratios[i] = ours[i] / peers[i];
    }
    Arrays.sort(ratios);
    System.out.printf(Locale.ROOT, "%s, %s: %.1f us, C %.1f us, ratio %.2f (%.2f to %.2f)%n", what,
        name, median(ours), median(peers), median(ratios), ratios[0], ratios[ROUNDS - 1]);
  }

  private static double microseconds(Supplier<Integer> work, int times) {
    long begin = SYSTEM.getProcessCpuTime();
    for (int i = 0; i < times; ++i) {
      seen += work.get();
    }
    return (SYSTEM.getProcessCpuTime() - begin) / 1e3 / times;
  }

  private double byC(String request, int times) throws IOException, InterruptedException {
    Process process = new ProcessBuilder(ask, folder, request, Integer.toString(times))
        .redirectError(ProcessBuilder.Redirect.INHERIT)
        .start();
    byte[] said = process.getInputStream().readAllBytes();
    if (process.waitFor() != 0) {
      throw new IOException(ask + " did not answer");
    }
    return Double.parseDouble(new String(said, StandardCharsets.UTF_8).trim()) / 1e3;
  }

  private static double median(double[] values) {
    double[] sorted = values.clone();
    Arrays.sort(sorted);
    return sorted[sorted.length / 2];
  }
}
