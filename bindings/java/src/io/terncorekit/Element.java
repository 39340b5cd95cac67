package io.terncorekit;

import java.util.Map;
import java.util.Objects;

/** Something that one can look for. */
public final class Element {
  /** "destination", "amenity" or "pathType". */
  public final String kind;

  /** Its id. */
  public final long id;

  private Element(String kind, long id) {
    this.kind = kind;
    this.id = id;
  }

  /**
   * A shop, an office, a gate.
   *
   * @param id of the destination
   * @return the element
   */
  public static Element destination(long id) {
    return new Element("destination", id);
  }

  /**
   * A toilet, a cash machine: one of many alike.
   *
   * @param id of the amenity
   * @return the element
   */
  public static Element amenity(long id) {
    return new Element("amenity", id);
  }

  /**
   * A lift, stairs: what leads from floor to floor.
   *
   * @param id of the path type
   * @return the element
   */
  public static Element pathType(long id) {
    return new Element("pathType", id);
  }

  static Element orNull(Object raw) {
    Map<String, Object> fields = Answer.fields(raw);
    return raw == null ? null : new Element((String) fields.get("kind"), (Long) fields.get("id"));
  }

  @Override
  public boolean equals(Object other) {
    return other instanceof Element && ((Element) other).kind.equals(kind)
        && ((Element) other).id == id;
  }

  @Override
  public int hashCode() {
    return Objects.hash(kind, id);
  }

  @Override
  public String toString() {
    return kind + " " + id;
  }
}
