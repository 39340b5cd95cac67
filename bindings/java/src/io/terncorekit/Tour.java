package io.terncorekit;

import java.util.List;
import java.util.Map;

/** A round of destinations in the order that is best. */
public final class Tour extends Answer {
  /** The way to each destination from the one before. */
  public final List<Route> legs;

  /** The ids of those that are visited, in order. */
  public final List<Long> destinations;

  private Tour(Map<String, Object> raw) {
    super(raw);
    legs = list(raw.get("legs"), Route::of);
    destinations = ids(raw.get("destinations"));
  }

  static Tour of(Map<String, Object> raw) {
    return new Tour(raw);
  }

  /**
   * How long all of it is.
   *
   * @return metres
   */
  public double metres() {
    return legs.stream().mapToDouble(Route::metres).sum();
  }

  @Override
  public String toString() {
    return Math.round(metres()) + " m to " + destinations.size() + " destinations";
  }
}
