package io.terncorekit;

import java.util.List;
import java.util.Map;
import java.util.stream.Collectors;

/** A route in steps that a person can follow; without a route there are none. */
public final class Directions extends Answer {
  /** The way. */
  public final Route route;

  /** What to do on it, in order. */
  public final List<Step> steps;

  /** Millimetres of walk. */
  public final double millimetres;

  /** Seconds that it takes. */
  public final double seconds;

  private Directions(Map<String, Object> raw) {
    super(raw);
    route = Route.of(raw.get("route"));
    steps = list(raw.get("steps"), Step::of);
    millimetres = real(raw.get("mm"));
    seconds = real(raw.get("seconds"));
  }

  static Directions of(Map<String, Object> raw) {
    return new Directions(raw);
  }

  @Override
  public String toString() {
    String words = steps.stream().map(step -> step.text).collect(Collectors.joining("\n"));
    return words.isEmpty() ? "no route" : words;
  }
}
