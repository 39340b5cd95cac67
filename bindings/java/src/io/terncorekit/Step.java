package io.terncorekit;

import java.util.Map;

/** One thing to do on the way. */
public final class Step extends Answer {
  /** "depart", "turn", "mover", "crossing" or "arrive". */
  public final String kind;

  /** "left", "slight right", "around" and the like; null for straight on. */
  public final String direction;

  /** The id of the map. */
  public final long mapId;

  /** The id of the waypoint where it is done. */
  public final long at;

  /** Millimetres of walk to the next step. */
  public final double millimetres;

  /** Seconds to the next step. */
  public final double seconds;

  /** The id of the path type that is taken, a lift or stairs; or null. */
  public final Long mover;

  /** The id of the map where it leads; or null. */
  public final Long toMapId;

  /** What is seen there; or null. */
  public final Element landmark;

  /** The step in words. */
  public final String text;

  private Step(Map<String, Object> raw) {
    super(raw);
    kind = (String) raw.get("kind");
    direction = (String) raw.get("direction");
    mapId = (Long) raw.get("mapId");
    at = (Long) raw.get("at");
    millimetres = real(raw.get("mm"));
    seconds = real(raw.get("seconds"));
    mover = idOrNull(raw.get("mover"));
    toMapId = idOrNull(raw.get("toMapId"));
    landmark = Element.orNull(raw.get("landmark"));
    text = (String) raw.get("text");
  }

  static Step of(Object raw) {
    return new Step(fields(raw));
  }

  @Override
  public String toString() {
    return text;
  }
}
