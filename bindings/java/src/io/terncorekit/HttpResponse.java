package io.terncorekit;

/** What came of a request. */
public final class HttpResponse {
  /** The HTTP status. */
  public final int status;

  /** Whether a redirect led to another scheme, host or port. Such an answer is used, not kept. */
  public final boolean leftOrigin;

  final byte[] body;

  /**
   * An answer without redirects to elsewhere.
   *
   * @param status the HTTP status
   * @param body decompressed; null when none came. It is not to be changed any more.
   */
  public HttpResponse(int status, byte[] body) {
    this(status, body, false);
  }

  /**
   * An answer.
   *
   * @param status the HTTP status
   * @param body decompressed; null when none came. It is not to be changed any more.
   * @param leftOrigin whether a redirect led to another scheme, host or port on the way
   */
  public HttpResponse(int status, byte[] body, boolean leftOrigin) {
    this.status = status;
    this.body = body;
    this.leftOrigin = leftOrigin;
  }
}
