package io.terncorekit;

import java.util.ArrayList;
import java.util.Collections;
import java.util.List;

/** A way, in segments; without any there is no way. */
public final class Route extends Answer {
  /** One for each stretch on a map, in walking order. */
  public final List<Segment> segments;

  private Route(Object raw) {
    super(raw);
    segments = list(raw, Segment::of);
  }

  static Route of(Object raw) {
    return new Route(raw);
  }

  /**
   * Whether there is no way.
   *
   * @return true without segments
   */
  public boolean isEmpty() {
    return segments.isEmpty();
  }

  /**
   * What all of it costs.
   *
   * @return map units, with what lifts and the like add to them; 0 where there is no way
   */
  public double cost() {
    return isEmpty() ? 0 : last().cost;
  }

  /**
   * How long all of it is.
   *
   * @return metres; 0 where there is no way, and where maps have no scale
   */
  public double metres() {
    return isEmpty() ? 0 : last().millimetres / 1000;
  }

  /**
   * The waypoints from start to end.
   *
   * @return their ids
   */
  public List<Long> waypoints() {
    List<Long> all = new ArrayList<>();
    segments.forEach(segment -> all.addAll(segment.points));
    return Collections.unmodifiableList(all);
  }

  private Segment last() {
    return segments.get(segments.size() - 1);
  }

  @Override
  public String toString() {
    long floors = segments.stream().map(segment -> segment.mapId).distinct().count();
    String unit = floors == 1 ? " floor" : " floors";
    return isEmpty() ? "no route" : Math.round(metres()) + " m over " + floors + unit;
  }
}
