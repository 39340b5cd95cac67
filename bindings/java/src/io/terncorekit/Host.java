package io.terncorekit;

import java.util.Objects;
import java.util.function.Consumer;

/**
 * What an application provides in place of what the library brings: HTTP, files, the log.
 *
 * <pre>{@code
 * new Host().http(new UrlConnectionTransport(threads)).log(line -> Log.w("maps", line)).use();
 * }</pre>
 *
 * <p>To be used before the first hub is opened: hubs that are open keep what they were opened with.
 */
public final class Host {
  private HttpTransport http;
  private FileStore files;
  private Consumer<? super String> log;

  /** The library's own of everything. */
  public Host() {}

  /**
   * The application's HTTP.
   *
   * @param http takes what is asked of a service
   * @return this host
   */
  public Host http(HttpTransport http) {
    this.http = Objects.requireNonNull(http, "http");
    return this;
  }

  /**
   * The application's files.
   *
   * @param files keeps what is loaded
   * @return this host
   */
  public Host files(FileStore files) {
    this.files = Objects.requireNonNull(files, "files");
    return this;
  }

  /**
   * The application's log.
   *
   * @param log takes lines, which never hold a secret, from any thread
   * @return this host
   */
  public Host log(Consumer<? super String> log) {
    this.log = Objects.requireNonNull(log, "log");
    return this;
  }

  /** Puts this host in the place of the current one. */
  public void use() {
    boolean isOwn = http == null && files == null && log == null;
    HostCalls calls = isOwn ? null : new HostCalls(http, files, log);
    Native.setHost(calls, http != null, files != null, log != null);
  }
}
