package io.terncorekit;

import java.util.List;
import java.util.Map;

/** What is asked of a server. */
public final class HttpRequest {
  /** Such as "GET". */
  public final String method;

  /** Absolute, percent-encoded. */
  public final String url;

  /** Names and values; a name may come more than once. */
  public final List<Map.Entry<String, String>> headers;

  private final byte[] body;

  HttpRequest(String method, String url, List<Map.Entry<String, String>> headers, byte[] body) {
    this.method = method;
    this.url = url;
    this.headers = headers;
    this.body = body;
  }

  /**
   * What is sent, as it is.
   *
   * @return bytes of one's own; null for none
   */
  public byte[] body() {
    return body == null ? null : body.clone();
  }
}
