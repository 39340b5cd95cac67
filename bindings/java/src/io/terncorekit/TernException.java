package io.terncorekit;

import java.util.Map;

/**
 * An error of the library, with the library's own code.
 *
 * <p>TN001: the service was not reached. TN002: it refused. TN003: what should be JSON is none.
 * TN006: a wrong argument, or something that was closed. TN007: nothing was found. TN008:
 * everything else, want of memory included.
 */
public final class TernException extends RuntimeException {
  private static final long serialVersionUID = 1;

  /** Such as "TN006". */
  public final String code;

  /** What the code means in general; it may be empty. */
  public final String description;

  TernException(String code, String message, String description) {
    super(message);
    this.code = code;
    this.description = description;
  }

  /** Made of the error that a function returned; called by the layer below. */
  static TernException of(byte[] text) {
    String said = Text.taken(text);
    TernException error = in(Json.object(said));
    return error != null ? error : new TernException("TN008", said, "");
  }

  /** The error that an answer holds; null when it holds none. */
  static TernException in(Map<String, Object> answer) {
    Object error = answer.get("error");
    if (!(error instanceof Map)) {
      return null;
    }
    Map<?, ?> fields = (Map<?, ?>) error;
    return new TernException(
        text(fields, "code"), text(fields, "message"), text(fields, "description"));
  }

  static TernException closed(String what) {
    return new TernException("TN006", "the " + what + " is closed", "");
  }

  private static String text(Map<?, ?> fields, String name) {
    Object value = fields.get(name);
    return value instanceof String ? (String) value : "";
  }

  /** The code and what it is in this case. */
  @Override
  public String toString() {
    return code + ": " + getMessage();
  }
}
