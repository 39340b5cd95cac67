package io.terncorekit;

import java.nio.file.Path;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.Set;
import java.util.WeakHashMap;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.Executor;
import java.util.concurrent.ForkJoinPool;

/**
 * Loads venues of a customer from a mapping service, and keeps what it loads.
 *
 * <pre>{@code
 * Hub.Settings settings = new Hub.Settings("https://maps.example.com", 42, id, secret);
 * try (Hub hub = new Hub(settings.executor(mainThread))) {
 *   hub.load(7).thenAccept(this::show);
 * }
 * }</pre>
 *
 * <p>What the service does not answer is taken from what is kept. Venues that were loaded stay when
 * the hub is closed. No request is sent before the first load. Any thread may call; no call waits
 * for the service. One that nobody closes is closed when it was collected and another is opened, or
 * when the program ends.
 */
public final class Hub implements AutoCloseable {
  private static final Set<Hub> OPEN =
      Collections.synchronizedSet(Collections.newSetFromMap(new WeakHashMap<>()));

  final Executor executor;
  private final Handle handle;

  /**
   * Opens a hub.
   *
   * @param settings of the service and of what is kept
   * @throws TernException where they mean nothing
   */
  public Hub(Settings settings) {
    executor = settings.executor;
    byte[] options = Text.given(Json.write(settings.options), "settings");
    handle = new Handle(this, Native.openHub(options), Native::closeHub);
    OPEN.add(this);
  }

  /**
   * Loads a venue with all its buildings, or several that are joined, as {@link Venue#open} does.
   * Loads of one hub follow each other.
   *
   * @param venues the ids of those to load; without any, the customer's only one
   * @return the venue, to be closed, or a {@link TernException}; completed by the hub's executor.
   *     Cancelling it closes the venue that comes yet.
   */
  public CompletableFuture<Venue> load(long... venues) {
    HubJob<Venue> job = new HubJob<Venue>(this) {
      @Override
      Venue result(long venue, Map<String, Object> text) {
        return new Venue(venue);
      }

      @Override
      void discard(Venue venue) {
        venue.close();
      }
    };
    byte[] options = Venue.options(venues);
    Native.load(number(), options, job);
    return job.future;
  }

  /**
   * Lists the customer's venues.
   *
   * @return their names, or a {@link TernException}; completed by the hub's executor
   */
  public CompletableFuture<List<VenueName>> venues() {
    HubJob<List<VenueName>> job = new HubJob<List<VenueName>>(this) {
      @Override
      List<VenueName> result(long venue, Map<String, Object> text) {
        return Answer.list(text.get("venues"), VenueName::of);
      }
    };
    Native.list(number(), job);
    return job.future;
  }

  /** Ends what is under way, with an error. Once or more often. */
  @Override
  public void close() {
    handle.close();
  }

  /**
   * Whether it was closed.
   *
   * @return true from the first {@link #close} on
   */
  public boolean isClosed() {
    return handle.isClosed();
  }

  private long number() {
    if (isClosed()) {
      throw TernException.closed("hub");
    }
    return handle.number;
  }

  static void closeAll() {
    for (Hub each : OPEN.toArray(new Hub[0])) {
      each.close();
    }
  }

  /** How a hub is opened. */
  public static final class Settings {
    private final Map<String, Object> options = new LinkedHashMap<>();
    private Executor executor = ForkJoinPool.commonPool();

    /**
     * What every hub needs. The credentials go to that host only; all hubs of a process share the
     * last ones.
     *
     * @param host scheme and host, "https://maps.example.com"
     * @param customerId the id of the customer
     * @param clientId of the credentials
     * @param clientSecret of the credentials
     */
    public Settings(String host, long customerId, String clientId, String clientSecret) {
      options.put("host", Objects.requireNonNull(host, "host"));
      options.put("customerId", customerId);
      options.put("clientId", Objects.requireNonNull(clientId, "clientId"));
      options.put("clientSecret", Objects.requireNonNull(clientSecret, "clientSecret"));
    }

    /**
     * Names the thread on which loads and lists are handed over.
     *
     * @param executor such as that of Android's main thread; without it the common pool
     * @return these settings
     */
    public Settings executor(Executor executor) {
      this.executor = Objects.requireNonNull(executor, "executor");
      return this;
    }

    /**
     * The language of the documents.
     *
     * @param locale without it "en-US"
     * @return these settings
     */
    public Settings locale(String locale) {
      options.put("locale", Objects.requireNonNull(locale, "locale"));
      return this;
    }

    /**
     * Asks the service for GeoJSON.
     *
     * @param geoJson without it false
     * @return these settings
     */
    public Settings geoJson(boolean geoJson) {
      options.put("geoJSON", geoJson);
      return this;
    }

    /**
     * Whether the service is asked for what is kept, too.
     *
     * @param autoReload without it true; false uses what is kept without asking
     * @return these settings
     */
    public Settings autoReload(boolean autoReload) {
      options.put("autoReloadCache", autoReload);
      return this;
    }

    /**
     * Where answers are kept.
     *
     * @param folder for this hub alone; without it the files of {@link Host}, or a folder of the
     *     user's data
     * @return these settings
     */
    public Settings cacheFolder(Path folder) {
      options.put("cacheFolder", folder.toFile().getAbsolutePath());
      return this;
    }
  }
}
