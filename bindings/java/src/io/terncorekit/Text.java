package io.terncorekit;

import java.nio.charset.StandardCharsets;

/** Texts on their way over the C interface: UTF-8 that ends with a NUL, and so holds none. */
final class Text {
  private Text() {}

  /** Refuses what UTF-8 or C cannot hold: a surrogate without its other half, a NUL. */
  static byte[] given(String text, String name) {
    for (int i = 0; i < text.length(); ++i) {
      char unit = text.charAt(i);
      if (unit == 0) {
        throw new IllegalArgumentException("the " + name + " holds a NUL");
      }
      if (Character.isSurrogate(unit)) {
        if (Character.isLowSurrogate(unit) || i + 1 == text.length()
            || !Character.isLowSurrogate(text.charAt(++i))) {
          throw new IllegalArgumentException("the " + name + " holds half a character");
        }
      }
    }
    return (text + '\0').getBytes(StandardCharsets.UTF_8);
  }

  /** What came without its NUL. */
  static String taken(byte[] text) {
    return new String(text, StandardCharsets.UTF_8);
  }
}
