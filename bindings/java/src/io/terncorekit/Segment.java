package io.terncorekit;

import java.util.List;
import java.util.Map;

/** A stretch of a route on one map. Its sums run from the route's start to the stretch's end. */
public final class Segment extends Answer {
  /** The id of the map. */
  public final long mapId;

  /** The id of the path type that leads on: a lift, stairs; null at the end. */
  public final Long mover;

  /** What the route has cost by here: map units, with what lifts and the like add to them. */
  public final double cost;

  /** Map units walked by here. */
  public final double pixelDistance;

  /** Millimetres walked by here; 0 where the map has no scale. */
  public final double millimetres;

  /** The ids of the waypoints, in walking order. */
  public final List<Long> points;

  /** Where they lie on the map. */
  public final List<Spot> mapPoints;

  private Segment(Map<String, Object> raw) {
    super(raw);
    mapId = (Long) raw.get("mapId");
    mover = idOrNull(raw.get("mover"));
    cost = real(raw.get("cost"));
    pixelDistance = real(raw.get("pixelDistance"));
    millimetres = real(raw.get("mmDistance"));
    points = ids(raw.get("points"));
    mapPoints = list(raw.get("mapPoints"), each -> Spot.of(mapId, each));
  }

  static Segment of(Object raw) {
    return new Segment(fields(raw));
  }
}
