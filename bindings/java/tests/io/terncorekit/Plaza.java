package io.terncorekit;

import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.BufferedReader;
import java.io.IOException;
import java.io.InputStreamReader;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.TimeUnit;
import java.util.function.BooleanSupplier;

/** What the tests share: the sample venue, the service of the command over it, and waiting. */
final class Plaza {
  static final Path FOLDER = Path.of("data/plaza");
  static final String ROUTE = "{\"op\":\"route\",\"from\":22001,\"to\":14016}";
  static final String TERN = System.getProperty("tern", "build/release/tern");

  private Plaza() {}

  static Venue open() {
    return Venue.open(FOLDER);
  }

  /** A document; null for none. */
  static byte[] read(String path) {
    try {
      return Files.exists(FOLDER.resolve(path)) ? Files.readAllBytes(FOLDER.resolve(path)) : null;
    } catch (IOException failure) {
      throw new UncheckedIOException(failure);
    }
  }

  static <T> T taken(CompletableFuture<T> future) throws Exception {
    return future.get(60, TimeUnit.SECONDS);
  }

  /** Fails, and does not hang. */
  static void await(String what, BooleanSupplier isSo) throws InterruptedException {
    for (int i = 0; i < 6000 && !isSo.getAsBoolean(); ++i) {
      Thread.sleep(10);
    }
    assertTrue(isSo.getAsBoolean(), what);
  }

  /** `tern serve` on this machine. */
  static final class Service implements AutoCloseable {
    final String address;
    private final Process process;

    Service() throws IOException {
      process = new ProcessBuilder(TERN, "serve", "--data", "data/plaza", "--port", "0").start();
      BufferedReader said = new BufferedReader(
          new InputStreamReader(process.getInputStream(), StandardCharsets.UTF_8));
      String line = said.readLine();
      address = line.substring(line.indexOf(" at http") + 4).split("\\s")[0];
    }

    Hub.Settings settings() {
      return new Hub.Settings(address, 1, "local", "local");
    }

    @Override
    public void close() {
      process.destroy();
    }
  }
}
