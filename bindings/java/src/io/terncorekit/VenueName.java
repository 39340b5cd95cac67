package io.terncorekit;

import java.util.Map;

/** A venue of a customer, by its names. */
public final class VenueName extends Answer {
  /** What {@link Hub#load} wants. */
  public final long id;

  /** As the customer's other systems know it. */
  public final String externalId;

  /** As people know it. */
  public final String name;

  private VenueName(Map<String, Object> raw) {
    super(raw);
    id = (Long) raw.get("id");
    externalId = (String) raw.get("externalId");
    name = (String) raw.get("name");
  }

  static VenueName of(Object raw) {
    return new VenueName(fields(raw));
  }

  @Override
  public String toString() {
    return name;
  }
}
