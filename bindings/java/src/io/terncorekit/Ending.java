package io.terncorekit;

/**
 * The end of the program, while threads of the library may be calling Java: what is under way ends,
 * and they leave. Else the end of the process would wait for them for ever.
 */
final class Ending {
  private static final int LONGEST_WAIT_MILLISECONDS = 60_000;

  private Ending() {}

  static void prepare() {
    try {
      Runtime.getRuntime().addShutdownHook(new Thread(Ending::end, "terncorekit-ending"));
    } catch (IllegalStateException late) {
      // The program ends already.
    }
  }

  private static void end() {
    Hub.closeAll();
    Native.setHost(null, false, false, false);
    try {
      for (int i = 0; i < LONGEST_WAIT_MILLISECONDS && Native.endCalls() > 0; ++i) {
        Thread.sleep(1);
      }
    } catch (InterruptedException thrown) {
      Thread.currentThread().interrupt();
    }
  }
}
