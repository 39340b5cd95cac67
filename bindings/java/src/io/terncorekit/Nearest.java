package io.terncorekit;

import java.util.Collections;
import java.util.List;
import java.util.Map;

/** What is nearest. */
public final class Nearest extends Answer {
  /** The id of the waypoint where it is reached; null where nothing is. */
  public final Long waypoint;

  /** What it is; null where nothing is. */
  public final Element element;

  /** The way to it; null where straight lines were asked for. */
  public final Route route;

  /** Straight lines: the ids of the waypoints where floors were changed, in order. */
  public final List<Long> connectors;

  private Nearest(Map<String, Object> raw) {
    super(raw);
    waypoint = idOrNull(raw.get("waypoint"));
    element = Element.orNull(raw.get("element"));
    route = raw.containsKey("route") ? Route.of(raw.get("route")) : null;
    connectors =
        raw.containsKey("connectors") ? ids(raw.get("connectors")) : Collections.emptyList();
  }

  static Nearest of(Map<String, Object> raw) {
    return new Nearest(raw);
  }

  @Override
  public String toString() {
    return element == null ? "nothing" : element + " at waypoint " + waypoint;
  }
}
