package io.terncorekit;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.List;
import java.util.Set;
import org.junit.jupiter.api.AfterAll;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;

/** What is answered, as values. */
class AnswersTest {
  static final Options WHEELCHAIR = Options.NONE.accessibility(0);
  static Venue venue;

  @BeforeAll
  static void open() {
    venue = Plaza.open();
  }

  @AfterAll
  static void close() {
    venue.close();
  }

  @Test
  void aRouteHasItsSegments() {
    Route route = venue.route(22001, 14016);
    assertEquals("132 m over 4 floors", route.toString());
    assertEquals(131.98856, route.metres());
    assertEquals(22001, route.waypoints().get(0));
    assertEquals(14016, route.waypoints().get(route.waypoints().size() - 1));
    Segment first = route.segments.get(0);
    assertEquals(22, first.mapId);
    assertEquals(1, first.mover);
    assertEquals(1294.7091, first.cost);
    assertEquals(1294.7091, first.pixelDistance);
    assertEquals(64735.457, first.millimetres);
    assertEquals(new Spot(22, 264, 1670), first.mapPoints.get(0));
    assertEquals(first.points.size(), first.mapPoints.size());
    assertEquals(route.cost(), route.segments.get(3).cost);
    assertThrows(UnsupportedOperationException.class, () -> route.segments.clear());
  }

  @Test
  void whereThereIsNoWayARouteIsEmpty() {
    Route route = venue.route(22001, 1);
    assertTrue(route.isEmpty());
    assertEquals(0, route.metres());
    assertEquals(0, route.cost());
    assertEquals(List.of(), route.waypoints());
    assertEquals("no route", route.toString());
    assertEquals("no route", venue.directions(22001, 1).toString());
  }

  @Test
  void answersAreEqualWhenTheirJsonIs() {
    assertEquals(venue.route(22001, 14016), venue.route(22001, 14016));
    assertEquals(venue.route(22001, 14016).hashCode(), venue.route(22001, 14016).hashCode());
    assertNotEquals(venue.route(22001, 14016), venue.route(14016, 22001));
    assertNotEquals(venue.route(22001, 14016), null);
    assertEquals(
        Set.of(Element.amenity(2)), Set.of(venue.nearest(22001, Element.amenity(2)).element));
  }

  @Test
  void theCheapestOfSeveralIsFound() {
    assertEquals(venue.route(22001, 22026), venue.routeToAny(22001, List.of(14016L, 22026L)));
    assertEquals(venue.route(22001, 14016, WHEELCHAIR),
        venue.routeToAny(22001, List.of(14016L), WHEELCHAIR));
  }

  @Test
  void accessibilityIsAskedFor() {
    assertNotEquals(venue.route(12002, 14016), venue.route(12002, 14016, WHEELCHAIR));
  }

  @Test
  void directionsAreSteps() {
    Directions directions = venue.directions(14016, 12025);
    assertEquals("Start at Foxglove Cameras", directions.steps.get(0).toString());
    assertTrue(directions.toString().endsWith("\nYou have reached Poppy Records"));
    assertEquals(venue.route(14016, 12025), directions.route);
    assertEquals(directions.route.metres() * 1000, directions.millimetres, 0.1);
    assertTrue(directions.seconds > 30);
    Step mover = directions.steps.get(2);
    assertEquals("mover", mover.kind);
    assertEquals(14, mover.mapId);
    assertNotNull(mover.mover);
    assertNotNull(mover.toMapId);
    assertNotNull(directions.steps.get(1).landmark);
    assertEquals("right", directions.steps.get(1).direction);
    assertTrue(mover.seconds > 0);
    assertEquals(directions.route.segments.get(0).points.get(0), directions.steps.get(0).at);
    assertTrue(directions.steps.get(0).millimetres > 0);
    assertNotEquals(directions.toString(),
        venue.directions(14016, 12025, Options.NONE.language("de")).toString());
  }

  @Test
  void aTourVisitsAll() {
    Tour tour = venue.tour(12002, List.of(42L, 17L, 25L));
    assertEquals(Set.of(17L, 25L, 42L), Set.copyOf(tour.destinations));
    assertEquals(3, tour.legs.size());
    assertEquals(tour.legs.stream().mapToDouble(Route::metres).sum(), tour.metres());
    assertTrue(tour.toString().endsWith(" m to 3 destinations"));
  }

  @Test
  void theNearestByWalkHasItsWay() {
    Nearest nearest = venue.nearest(22001, Element.amenity(2));
    assertEquals(22012, nearest.waypoint);
    assertEquals(Element.amenity(2), nearest.element);
    assertFalse(nearest.route.isEmpty());
    assertEquals("amenity 2 at waypoint 22012", nearest.toString());
    Nearest any =
        venue.nearest(22001, Element.amenity(2), Element.destination(31), Element.pathType(1));
    assertNotNull(any.element);
    assertTrue(any.route.cost() <= nearest.route.cost());
  }

  @Test
  void theNearestInStraightLinesHasNone() {
    Nearest nearest = venue.nearest(new Spot(22, 400, 300), Element.amenity(2));
    assertEquals(22012, nearest.waypoint);
    assertNull(nearest.route);
    assertEquals(List.of(), nearest.connectors);
  }

  @Test
  void aMatrixHasARowForEachStart() {
    Matrix matrix = venue.matrix(List.of(22001L, 12002L), List.of(14016L, 11001L, 99999L));
    assertEquals(List.of(22001L, 12002L), matrix.starts);
    assertEquals(List.of(14016L, 11001L, 99999L), matrix.goals);
    assertEquals(131988.56, matrix.millimetres(0, 0));
    assertEquals(28100.0, matrix.millimetres(1, 1));
    assertEquals(3337.7712, matrix.cost(0, 0));
    assertEquals(Double.POSITIVE_INFINITY, matrix.cost(0, 2));
    assertThrows(IndexOutOfBoundsException.class, () -> matrix.cost(2, 0));
    assertEquals(List.of(), venue.matrix(List.of(), List.of(14016L), WHEELCHAIR).starts);
  }

  @Test
  void reachIsTheCheapestFirst() {
    List<Reached> reached = venue.reach(22001, 10);
    assertEquals(22026, reached.get(1).waypoint);
    assertEquals(66, reached.get(1).cost);
    assertEquals(3300, reached.get(1).millimetres);
    assertTrue(venue.reach(List.of(22001L, 14016L), 10, Options.NONE).size() > reached.size());
  }

  @Test
  void placesAreFoundByName() {
    Place place = venue.places("toys").get(0);
    assertEquals("Everly Toys", place.toString());
    assertEquals("destination", place.kind);
    assertEquals(31, place.id);
    assertEquals(List.of(13L), place.mapIds);
    assertEquals(List.of(13020L), place.waypoints);
    assertTrue(venue.places("").size() > 20);
  }
}
