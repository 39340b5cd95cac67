package io.terncorekit;

import java.util.concurrent.CompletableFuture;

/** Sends what the library asks of a service; {@link UrlConnectionTransport} is a ready one. */
@FunctionalInterface
public interface HttpTransport {
  /**
   * Begins to send a request, to the service and not to a local cache, and follows redirects.
   * Cookies and stored passwords are not sent. Called from any thread, and from several at once; it
   * returns without waiting.
   *
   * @param request what is asked
   * @return what will come of it; an exception is why nothing did. It is cancelled when nobody
   *     waits for it any more.
   */
  CompletableFuture<HttpResponse> send(HttpRequest request);
}
