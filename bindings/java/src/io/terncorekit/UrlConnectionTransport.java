package io.terncorekit;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.net.HttpURLConnection;
import java.net.URL;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.TreeMap;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.Executor;

/**
 * HTTP by {@link HttpURLConnection}, which Java and Android both have: the device's own
 * certificates and proxies. Credentials do not follow a redirect to another origin. Where the
 * application has set a {@link java.net.CookieHandler} for all its connections, that sees these,
 * too.
 */
public final class UrlConnectionTransport implements HttpTransport {
  private static final int CONNECT_MILLISECONDS = 10_000;
  private static final int SILENCE_MILLISECONDS = 30_000;
  private static final int MOST_REDIRECTS = 10;

  private final Executor threads;

  /**
   * Ready to be given to {@link Host#http}.
   *
   * @param threads on which exchanges wait, one on each; not the main thread
   */
  public UrlConnectionTransport(Executor threads) {
    this.threads = Objects.requireNonNull(threads, "threads");
  }

  @Override
  public CompletableFuture<HttpResponse> send(HttpRequest request) {
    CompletableFuture<HttpResponse> answer = new CompletableFuture<>();
    threads.execute(() -> {
      try {
        answer.complete(new Exchange(request, answer).response());
      } catch (Throwable thrown) {
        answer.completeExceptionally(thrown);
      }
    });
    return answer;
  }

  /** One request on its way, over all its redirects. */
  private static final class Exchange {
    private final CompletableFuture<?> answer;
    private final Map<String, List<String>> headers = new TreeMap<>(String.CASE_INSENSITIVE_ORDER);
    private URL url;
    private String method;
    private byte[] body;
    private boolean leftOrigin;

    Exchange(HttpRequest request, CompletableFuture<?> answer) throws IOException {
      this.answer = answer;
      url = new URL(request.url);
      method = request.method;
      body = request.body();
      for (Map.Entry<String, String> each : request.headers) {
        headers.computeIfAbsent(each.getKey(), name -> new ArrayList<>()).add(each.getValue());
      }
    }

    HttpResponse response() throws IOException {
      for (int i = 0; i <= MOST_REDIRECTS && !answer.isDone(); ++i) {
        HttpURLConnection connection = connection();
        // Who cancels ends the wait for this connection.
        answer.whenComplete((response, failure) -> connection.disconnect());
        write(connection);
        int status = connection.getResponseCode();
        String location = connection.getHeaderField("Location");
        if (!isRedirect(status) || location == null) {
          return new HttpResponse(status, contents(connection, status), leftOrigin);
        }
        follow(status, new URL(url, location));
      }
      throw new IOException("too many redirects");
    }

    private HttpURLConnection connection() throws IOException {
      HttpURLConnection connection = (HttpURLConnection) url.openConnection();
      connection.setConnectTimeout(CONNECT_MILLISECONDS);
      connection.setReadTimeout(SILENCE_MILLISECONDS);
      connection.setUseCaches(false);
      connection.setInstanceFollowRedirects(false);
      connection.setRequestMethod(method);
      headers.forEach(
          (name, values) -> values.forEach(value -> connection.addRequestProperty(name, value)));
      return connection;
    }

    private void write(HttpURLConnection connection) throws IOException {
      if (body != null) {
        connection.setDoOutput(true);
        connection.setFixedLengthStreamingMode(body.length);
        try (OutputStream out = connection.getOutputStream()) {
          out.write(body);
        }
      }
    }

    private void follow(int status, URL to) throws IOException {
      if (!to.getProtocol().equals("https") && !to.getProtocol().equals(url.getProtocol())) {
        throw new IOException(
            "redirect refused: from " + url.getProtocol() + " to " + to.getProtocol());
      }
      boolean isKept = status == 307 || status == 308;
      if (!method.equals("HEAD") && !isKept) {
        method = "GET";
        body = null;
        headers.remove("Content-Type");
      }
      if (!origin(to).equals(origin(url))) {
        if (body != null) {
          throw new IOException("redirect refused: it would carry the body to another host");
        }
        headers.remove("Authorization");
        headers.remove("Cookie");
        leftOrigin = true;
      }
      url = to;
    }

    private static byte[] contents(HttpURLConnection connection, int status) throws IOException {
      try (InputStream in =
               status >= 400 ? connection.getErrorStream() : connection.getInputStream()) {
        return in == null ? new byte[0] : all(in);
      }
    }

    /** As readAllBytes, which Android has had for a short time only. */
    private static byte[] all(InputStream in) throws IOException {
      ByteArrayOutputStream out = new ByteArrayOutputStream();
      byte[] some = new byte[1 << 16];
      for (int size = in.read(some); size >= 0; size = in.read(some)) {
        out.write(some, 0, size);
      }
      return out.toByteArray();
    }

    private static boolean isRedirect(int status) {
      return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
    }

    private static String origin(URL url) {
      int port = url.getPort() < 0 ? url.getDefaultPort() : url.getPort();
      return url.getProtocol() + "://" + url.getHost() + ":" + port;
    }
  }
}
