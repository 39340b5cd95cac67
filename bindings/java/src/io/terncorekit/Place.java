package io.terncorekit;

import java.util.List;
import java.util.Map;

/** Something with a name that one can go to. */
public final class Place extends Answer {
  /** "destination" or "amenity". */
  public final String kind;

  /** Its id. */
  public final long id;

  /** As people know it. */
  public final String name;

  /** The ids of the maps that it is on. */
  public final List<Long> mapIds;

  /** The ids of the waypoints where it is reached. */
  public final List<Long> waypoints;

  private Place(Map<String, Object> raw) {
    super(raw);
    kind = (String) raw.get("kind");
    id = (Long) raw.get("id");
    name = (String) raw.get("name");
    mapIds = ids(raw.get("mapIds"));
    waypoints = ids(raw.get("waypoints"));
  }

  static Place of(Object raw) {
    return new Place(fields(raw));
  }

  @Override
  public String toString() {
    return name;
  }
}
