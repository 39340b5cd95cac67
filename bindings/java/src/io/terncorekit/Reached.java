package io.terncorekit;

import java.util.Map;

/** A waypoint that is within reach. */
public final class Reached extends Answer {
  /** Its id. */
  public final long waypoint;

  /** What it costs to get there: map units, with what lifts and the like add to them. */
  public final double cost;

  /** Millimetres of walk. */
  public final double millimetres;

  private Reached(Map<String, Object> raw) {
    super(raw);
    waypoint = (Long) raw.get("waypoint");
    cost = real(raw.get("cost"));
    millimetres = real(raw.get("mm"));
  }

  static Reached of(Object raw) {
    return new Reached(fields(raw));
  }
}
