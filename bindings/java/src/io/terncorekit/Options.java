package io.terncorekit;

import java.util.LinkedHashMap;
import java.util.Map;
import java.util.Objects;

/**
 * What a question may say beside its waypoints. It does not change; each method gives another one.
 *
 * <pre>{@code venue.directions(22001, 14016, Options.NONE.accessibility(0).language("de"))}</pre>
 */
public final class Options {
  /** All ways, in English, of the only venue. */
  public static final Options NONE = new Options(null, null, null);

  private final Integer accessibility;
  private final String language;
  private final Long venue;

  private Options(Integer accessibility, String language, Long venue) {
    this.accessibility = accessibility;
    this.language = language;
    this.venue = venue;
  }

  /**
   * Which ways may be taken.
   *
   * @param level 100 for all ways, which is so without it; 0 for those that a wheelchair can take
   * @return these options with that level
   */
  public Options accessibility(int level) {
    return new Options(level, language, venue);
  }

  /**
   * The language of directions.
   *
   * @param language "en", which is so without it, "de", "fr", "es" or "ja"
   * @return these options in that language
   */
  public Options language(String language) {
    return new Options(accessibility, Objects.requireNonNull(language, "language"), venue);
  }

  /**
   * The venue that is asked, where several are joined: all but routes want it there.
   *
   * @param id of the venue
   * @return these options for that venue
   */
  public Options venue(long id) {
    return new Options(accessibility, language, id);
  }

  /** A request that says so. */
  Map<String, Object> request(String operation) {
    Map<String, Object> request = new LinkedHashMap<>();
    request.put("op", operation);
    put(request, "accessibility", accessibility);
    put(request, "language", language);
    put(request, "venue", venue);
    return request;
  }

  private static void put(Map<String, Object> request, String name, Object value) {
    if (value != null) {
      request.put(name, value);
    }
  }
}
