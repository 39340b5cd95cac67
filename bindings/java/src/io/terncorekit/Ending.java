package io.terncorekit;

/** The end of the program, while the library may still call Java: what is done before. */
final class Ending {
  private Ending() {}

  static void before(Runnable work) {
    Runtime.getRuntime().addShutdownHook(new Thread(work, "terncorekit-ending"));
  }
}
