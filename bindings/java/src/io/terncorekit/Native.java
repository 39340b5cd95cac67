package io.terncorekit;

/**
 * The C interface, by the library "terncorekit-jni". Texts that are given end with a NUL; those
 * that are taken do not. What fails throws a {@link TernException}. Handles are numbers, each given
 * once, that may be closed and asked at the same time.
 */
final class Native {
  static {
    String file = System.getProperty("terncorekit.library");
    if (file != null) {
      System.load(file);
    } else {
      System.loadLibrary("terncorekit-jni");
    }
    Ending.prepare();
  }

  private Native() {}

  static native byte[] version();

  /** From now on no thread of the library calls Java; how many are doing so yet. */
  static native int endCalls();

  static native long openFolder(byte[] folder, byte[] options);

  static native long openDocuments(Documents documents, byte[] options);

  static native byte[] answer(long venue, byte[] request);

  /** Of no handle, or of one that was closed before, it does nothing. */
  static native void closeVenue(long venue);

  static native long openHub(byte[] options);

  static native void load(long hub, byte[] options, HubJob<?> job);

  static native void list(long hub, HubJob<?> job);

  static native void closeHub(long hub);

  /** `calls` is null for the library's own of everything. */
  static native void setHost(HostCalls calls, boolean http, boolean files, boolean log);

  /** Of an exchange that has ended it does nothing. */
  static native void complete(
      long exchange, int status, boolean leftOrigin, byte[] body, byte[] error);
}
