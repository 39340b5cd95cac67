package io.terncorekit;

import java.util.function.Function;

/** Documents from the application, during the call that opens a venue, on its thread. */
final class Documents {
  private final Function<? super String, byte[]> source;
  private Throwable failure;

  Documents(Function<? super String, byte[]> source) {
    this.source = source;
  }

  /** Called by the library; null for none. After a failure nothing more is asked. */
  byte[] get(byte[] path) {
    if (failure != null) {
      return null;
    }
    try {
      return source.apply(Text.taken(path));
    } catch (Throwable thrown) {
      // It may not cross the library; it goes on where the library was called.
      failure = thrown;
      return null;
    }
  }

  /** Throws what the source has thrown. */
  void rethrow() {
    if (failure instanceof Error) {
      throw (Error) failure;
    }
    if (failure != null) {
      // What a Function throws is unchecked, but for what Kotlin lets through.
      throw Documents.<RuntimeException>unchecked(failure);
    }
  }

  @SuppressWarnings("unchecked")
  private static <E extends Throwable> E unchecked(Throwable thrown) throws E {
    throw (E) thrown;
  }
}
