package io.terncorekit;

import java.io.IOException;
import java.util.Collection;

/**
 * Where a hub keeps what it loads: files by their paths, such as "Tern/cache/5.12.2/.../data.json",
 * without folders to be made. Called from any thread, and from several at once. What is thrown
 * counts as a failure and goes to the log of Java.
 */
public interface FileStore {
  /**
   * The contents of a file.
   *
   * @param path of the file
   * @return its bytes; null where there is none
   * @throws IOException where it cannot be read
   */
  byte[] read(String path) throws IOException;

  /**
   * Writes a file, in the place of an older one as one step.
   *
   * @param path of the file
   * @param contents all of it
   * @throws IOException where it cannot be written
   */
  void write(String path, byte[] contents) throws IOException;

  /**
   * Removes a file.
   *
   * @param path of the file
   * @return false where there was none
   * @throws IOException where it cannot be removed
   */
  boolean remove(String path) throws IOException;

  /**
   * Lists files.
   *
   * @param prefix of paths
   * @return the paths of all files that begin so
   * @throws IOException where they cannot be listed
   */
  Collection<String> list(String prefix) throws IOException;
}
