package io.terncorekit;

import java.nio.charset.StandardCharsets;
import java.util.AbstractMap.SimpleImmutableEntry;
import java.util.ArrayList;
import java.util.Collection;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.concurrent.Callable;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.CompletionException;
import java.util.concurrent.ConcurrentHashMap;
import java.util.function.Consumer;
import java.util.logging.Level;
import java.util.logging.Logger;

/** A host as the library calls it, on whatever thread. Nothing is thrown. */
final class HostCalls {
  private static final Logger LOGGER = Logger.getLogger("io.terncorekit");

  private final HttpTransport http;
  private final FileStore files;
  private final Consumer<? super String> log;

  /** By exchange: completed when nobody waits for it any more. */
  private final Map<Long, CompletableFuture<Void>> underWay = new ConcurrentHashMap<>();

  HostCalls(HttpTransport http, FileStore files, Consumer<? super String> log) {
    this.http = http;
    this.files = files;
    this.log = log;
  }

  /** Headers are name, value, name, value, ... */
  void httpSend(long exchange, byte[] method, byte[] url, byte[][] headers, byte[] body) {
    CompletableFuture<Void> cancelled = new CompletableFuture<>();
    underWay.put(exchange, cancelled);
    CompletableFuture<HttpResponse> answer;
    try {
      HttpRequest request =
          new HttpRequest(Text.taken(method), Text.taken(url), pairs(headers), body);
      answer = Objects.requireNonNull(http.send(request), "what send returned");
    } catch (Throwable thrown) {
      answer = new CompletableFuture<>();
      answer.completeExceptionally(thrown);
    }
    CompletableFuture<HttpResponse> begun = answer;
    cancelled.thenRun(() -> begun.cancel(true));
    begun.whenComplete((response, failure) -> {
      underWay.remove(exchange);
      complete(exchange, response, failure);
    });
  }

  void httpCancel(long exchange) {
    CompletableFuture<Void> cancelled = underWay.remove(exchange);
    if (cancelled != null) {
      cancelled.complete(null);
    }
  }

  byte[] fileRead(byte[] path) {
    return attempt(() -> files.read(Text.taken(path)), null);
  }

  boolean fileWrite(byte[] path, byte[] contents) {
    return attempt(() -> {
      files.write(Text.taken(path), contents);
      return true;
    }, false);
  }

  boolean fileRemove(byte[] path) {
    return attempt(() -> files.remove(Text.taken(path)), false);
  }

  byte[][] fileList(byte[] prefix) {
    return attempt(() -> encoded(files.list(Text.taken(prefix))), new byte[0][]);
  }

  void log(byte[] line) {
    attempt(() -> {
      log.accept(Text.taken(line));
      return null;
    }, null);
  }

  private static void complete(long exchange, HttpResponse response, Throwable failure) {
    if (failure == null && response != null) {
      Native.complete(exchange, response.status, response.leftOrigin, response.body, null);
    } else {
      Throwable reason = failure instanceof CompletionException ? failure.getCause() : failure;
      Native.complete(exchange, 0, false, null, line(String.valueOf(reason)));
    }
  }

  /** One line, with its NUL. */
  private static byte[] line(String text) {
    String line = text.replaceAll("[\\s\\x00]+", " ");
    return (line + '\0').getBytes(StandardCharsets.UTF_8);
  }

  private static List<Map.Entry<String, String>> pairs(byte[][] headers) {
    List<Map.Entry<String, String>> pairs = new ArrayList<>();
    for (int i = 0; i + 1 < headers.length; i += 2) {
      pairs.add(new SimpleImmutableEntry<>(Text.taken(headers[i]), Text.taken(headers[i + 1])));
    }
    return Collections.unmodifiableList(pairs);
  }

  private static byte[][] encoded(Collection<String> paths) {
    return paths.stream()
        .map(each -> each.getBytes(StandardCharsets.UTF_8))
        .toArray(byte[][]::new);
  }

  /** What the work gives; `otherwise` when it throws. */
  private static <T> T attempt(Callable<T> work, T otherwise) {
    try {
      return work.call();
    } catch (Throwable thrown) {
      try {
        LOGGER.log(Level.SEVERE, "the application's host has failed", thrown);
      } catch (Throwable worse) {
        // Then nobody can be told.
      }
      return otherwise;
    }
  }
}
