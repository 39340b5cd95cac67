import io.terncorekit.Host;
import io.terncorekit.Venue;
import java.io.BufferedReader;
import java.io.InputStreamReader;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.util.stream.Stream;

/**
 * Answers requests as `tern batch` does, through the Java package.
 *
 * <p>Answers FOLDER VENUE... &lt;requests &gt;answers
 */
final class Answers {
  public static void main(String[] words) throws Exception {
    long[] venues = Stream.of(words).skip(1).mapToLong(Long::parseLong).toArray();
    new Host().log(line -> {}).use();
    PrintStream out = new PrintStream(System.out, false, StandardCharsets.UTF_8);
    try (Venue venue = Venue.open(Path.of(words[0]), venues);
         BufferedReader in =
             new BufferedReader(new InputStreamReader(System.in, StandardCharsets.UTF_8))) {
      for (String line = in.readLine(); line != null; line = in.readLine()) {
        if (!line.isBlank()) {
          out.print(venue.answer(line) + '\n');
        }
      }
    }
    out.flush();
  }
}
