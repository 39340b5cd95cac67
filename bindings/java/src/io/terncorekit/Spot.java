package io.terncorekit;

import java.util.List;

/** A point on a floor's map. */
public final class Spot {
  /** The id of the map. */
  public final long mapId;

  /** Map units to the right. */
  public final double x;

  /** Map units down. */
  public final double y;

  /**
   * A point on a map.
   *
   * @param mapId the id of the map
   * @param x map units to the right
   * @param y map units down
   */
  public Spot(long mapId, double x, double y) {
    this.mapId = mapId;
    this.x = x;
    this.y = y;
  }

  static Spot of(long mapId, Object raw) {
    List<?> at = (List<?>) raw;
    return new Spot(mapId, Answer.real(at.get(0)), Answer.real(at.get(1)));
  }

  @Override
  public boolean equals(Object other) {
    return other instanceof Spot && ((Spot) other).mapId == mapId
        && Double.compare(((Spot) other).x, x) == 0 && Double.compare(((Spot) other).y, y) == 0;
  }

  @Override
  public int hashCode() {
    return Long.hashCode(mapId) + 31 * Double.hashCode(x) + 961 * Double.hashCode(y);
  }

  @Override
  public String toString() {
    return x + ", " + y + " on map " + mapId;
  }
}
