package io.terncorekit;

import java.util.Collections;
import java.util.Map;
import java.util.concurrent.CompletableFuture;

/**
 * A load or a list that is under way. The library calls it once, when it has ended, on whatever
 * thread; the future is completed by the executor of the hub.
 */
abstract class HubJob<T> {
  private static final TernException NO_MEMORY =
      new TernException("TN008", "there is no memory for what the service said", "");

  final CompletableFuture<T> future = new CompletableFuture<>();

  /** Not collected, and so not closed, while it works. */
  private final Hub hub;

  HubJob(Hub hub) {
    this.hub = hub;
  }

  /** What the future is completed with. */
  abstract T result(long venue, Map<String, Object> text);

  /** Lets go of what the future did not take. */
  void discard(T result) {}

  /** Called by the library: with a venue, a list or an error. Nothing is thrown. */
  final void done(long venue, byte[] text) {
    try {
      Map<String, Object> said =
          text == null ? Collections.emptyMap() : Json.object(Text.taken(text));
      TernException error = venue == 0 && text == null ? NO_MEMORY : TernException.in(said);
      if (error != null) {
        hub.executor.execute(() -> future.completeExceptionally(error));
      } else {
        finish(result(venue, said));
      }
    } catch (Throwable thrown) {
      future.completeExceptionally(thrown);
    }
  }

  private void finish(T result) {
    try {
      hub.executor.execute(() -> {
        if (!future.complete(result)) {
          discard(result); // it was cancelled
        }
      });
    } catch (Throwable refused) {
      discard(result);
      throw refused;
    }
  }
}
