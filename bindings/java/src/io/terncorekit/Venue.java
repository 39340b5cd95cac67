package io.terncorekit;

import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collection;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.function.Function;
import java.util.stream.Collectors;
import java.util.stream.LongStream;

/**
 * A venue, or several that are joined by their exits, ready to be asked.
 *
 * <pre>{@code
 * try (Venue venue = Venue.open(Path.of("data/plaza"))) {
 *   System.out.println(venue.route(22001, 14016)); // 132 m over 4 floors
 * }
 * }</pre>
 *
 * <p>Any number of threads may ask one venue at once, and any may close it. Calls take as long as
 * the answer does: microseconds to milliseconds, seconds for large matrices. Once closed it throws,
 * code TN006. One that nobody closes is closed when it was collected and another is opened.
 */
public final class Venue implements AutoCloseable {
  // Volatile, so that it is read anew after a call of the library: until then the venue is not
  // collected, and so not closed.
  private volatile Handle handle;

  Venue(long number) {
    handle = new Handle(this, number, Native::closeVenue);
  }

  /**
   * Opens venues of a folder that holds the documents of a mapping service; it may take seconds.
   * Several are joined; one such set may be open at a time in a process.
   *
   * @param folder of the file system
   * @param venues the ids of those to open; without any, the only one of the folder
   * @return the venue, to be closed
   * @throws TernException where a document is missing or broken
   */
  public static Venue open(Path folder, long... venues) {
    byte[] path = Text.given(folder.toFile().getPath(), "path");
    return new Venue(Native.openFolder(path, options(venues)));
  }

  /**
   * Opens venues from documents. What the function throws comes out of here.
   *
   * @param documents is called on this thread with paths such as "venue/1/full.json", gives the
   *     document in UTF-8, and null where there is none
   * @param venues the ids of those to open; without any, the only one
   * @return the venue, to be closed
   * @throws TernException where a document is missing, which it names, or broken
   */
  public static Venue fromDocuments(Function<? super String, byte[]> documents, long... venues) {
    Documents source = new Documents(Objects.requireNonNull(documents, "documents"));
    long number = 0;
    try {
      number = Native.openDocuments(source, options(venues));
    } finally {
      try {
        source.rethrow();
      } catch (Throwable thrown) {
        Native.closeVenue(number);
        throw thrown;
      }
    }
    return new Venue(number);
  }

  /** The options by which venues are opened and loaded; null leaves the choice to the library. */
  static byte[] options(long... venues) {
    if (venues.length == 0) {
      return null;
    }
    List<Long> ids = LongStream.of(venues).boxed().collect(Collectors.toList());
    return Text.given(Json.write(Collections.singletonMap("venues", ids)), "options");
  }

  /**
   * The version of the library.
   *
   * @return such as "5.12.2"
   */
  public static String libraryVersion() {
    return Text.taken(Native.version());
  }

  /** Closes it, once or more often. Answers under way on other threads are finished. */
  @Override
  public void close() {
    handle.close();
  }

  /**
   * Whether it was closed.
   *
   * @return true from the first {@link #close} on
   */
  public boolean isClosed() {
    return handle.isClosed();
  }

  /**
   * The answer to a request in JSON, as {@code tern batch} gives it, byte for byte. An error is an
   * answer, too, but that of a closed venue.
   *
   * @param request on one line or on several
   * @return the answer on one line
   */
  public String answer(String request) {
    byte[] given = Text.given(request, "request");
    String answer = Text.taken(Native.answer(handle.number, given));
    // Asked last, since another thread may close it meanwhile.
    if (isClosed() && answer.startsWith("{\"error\":")) {
      throw TernException.closed("venue");
    }
    return answer;
  }

  /**
   * The answer to any request of {@code tern batch}; an error in it is thrown.
   *
   * @param request of maps, collections, strings, numbers, booleans and null
   * @return the answer, of maps, lists, strings, longs, doubles, booleans and null
   */
  public Map<String, Object> ask(Map<String, ?> request) {
    Map<String, Object> answer = Json.object(answer(Json.write(Objects.requireNonNull(request))));
    TernException error = TernException.in(answer);
    if (error != null) {
      throw error;
    }
    return answer;
  }

  /**
   * The cheapest way to a waypoint.
   *
   * @param start the id of a waypoint
   * @param goal the id of a waypoint
   * @return the way, empty where there is none
   */
  public Route route(long start, long goal) {
    return route(start, goal, Options.NONE);
  }

  /**
   * The cheapest way to a waypoint.
   *
   * @param start the id of a waypoint
   * @param goal the id of a waypoint
   * @param options the accessibility
   * @return the way, empty where there is none
   */
  public Route route(long start, long goal, Options options) {
    return Route.of(ask(between("route", start, goal, options)).get("route"));
  }

  /**
   * The way to whichever waypoint is the cheapest to reach.
   *
   * @param start the id of a waypoint
   * @param goals the ids of waypoints
   * @return the way, empty where there is none
   */
  public Route routeToAny(long start, Collection<Long> goals) {
    return routeToAny(start, goals, Options.NONE);
  }

  /**
   * The way to whichever waypoint is the cheapest to reach.
   *
   * @param start the id of a waypoint
   * @param goals the ids of waypoints
   * @param options the accessibility
   * @return the way, empty where there is none
   */
  public Route routeToAny(long start, Collection<Long> goals, Options options) {
    return Route.of(ask(between("routeToAny", start, ids(goals), options)).get("route"));
  }

  /**
   * The cheapest way in steps that a person can follow, in English.
   *
   * @param start the id of a waypoint
   * @param goal the id of a waypoint
   * @return the steps, none where there is no way
   */
  public Directions directions(long start, long goal) {
    return directions(start, goal, Options.NONE);
  }

  /**
   * The cheapest way in steps that a person can follow.
   *
   * @param start the id of a waypoint
   * @param goal the id of a waypoint
   * @param options accessibility, language and venue
   * @return the steps, none where there is no way
   */
  public Directions directions(long start, long goal, Options options) {
    return Directions.of(ask(between("directions", start, goal, options)));
  }

  /**
   * The best order to visit destinations.
   *
   * @param start the id of a waypoint
   * @param destinations their ids
   * @return the order, and the way to each
   */
  public Tour tour(long start, Collection<Long> destinations) {
    return tour(start, destinations, Options.NONE);
  }

  /**
   * The best order to visit destinations.
   *
   * @param start the id of a waypoint
   * @param destinations their ids
   * @param options accessibility and venue
   * @return the order, and the way to each
   */
  public Tour tour(long start, Collection<Long> destinations, Options options) {
    Map<String, Object> request = options.request("tour");
    request.put("from", start);
    request.put("destinations", ids(destinations));
    return Tour.of(ask(request));
  }

  /**
   * What of some elements is the nearest by walk.
   *
   * @param start the id of a waypoint
   * @param elements what is looked for, at least one
   * @return the element, and the way to it
   */
  public Nearest nearest(long start, Element... elements) {
    return nearest(start, Arrays.asList(elements), Options.NONE);
  }

  /**
   * What of some elements is the nearest by walk.
   *
   * @param start the id of a waypoint
   * @param elements what is looked for, at least one
   * @param options accessibility and venue
   * @return the element, and the way to it
   */
  public Nearest nearest(long start, Collection<Element> elements, Options options) {
    Map<String, Object> request = options.request("nearestByWalk");
    request.put("from", start);
    if (elements.size() == 1) {
      Element only = elements.iterator().next();
      request.put(only.kind, only.id);
    } else {
      putAll(request, "destinations", "destination", elements);
      putAll(request, "amenities", "amenity", elements);
      putAll(request, "pathTypes", "pathType", elements);
    }
    return Nearest.of(ask(request));
  }

  private static void putAll(
      Map<String, Object> request, String name, String kind, Collection<Element> elements) {
    List<Long> ids = new ArrayList<>();
    for (Element each : elements) {
      if (each.kind.equals(kind)) {
        ids.add(each.id);
      }
    }
    if (!ids.isEmpty()) {
      request.put(name, ids);
    }
  }

  /**
   * Where an element is the nearest in straight lines, floor by floor.
   *
   * @param start a point on a map
   * @param element what is looked for
   * @return the waypoint, and those where floors are changed
   */
  public Nearest nearest(Spot start, Element element) {
    return nearest(start, element, Options.NONE);
  }

  /**
   * Where an element is the nearest in straight lines, floor by floor.
   *
   * @param start a point on a map
   * @param element what is looked for
   * @param options the venue; straight lines have no accessibility
   * @return the waypoint, and those where floors are changed
   */
  public Nearest nearest(Spot start, Element element, Options options) {
    Map<String, Object> request = options.request("nearest");
    request.put("map", start.mapId);
    request.put("at", Arrays.asList(start.x, start.y));
    request.put(element.kind, element.id);
    return Nearest.of(ask(request));
  }

  /**
   * Costs and lengths from each start to each goal.
   *
   * @param starts the ids of waypoints
   * @param goals the ids of waypoints
   * @return a row for each start, a column for each goal
   */
  public Matrix matrix(Collection<Long> starts, Collection<Long> goals) {
    return matrix(starts, goals, Options.NONE);
  }

  /**
   * Costs and lengths from each start to each goal.
   *
   * @param starts the ids of waypoints
   * @param goals the ids of waypoints
   * @param options accessibility and venue
   * @return a row for each start, a column for each goal
   */
  public Matrix matrix(Collection<Long> starts, Collection<Long> goals, Options options) {
    return Matrix.of(ids(starts), ids(goals), options.request("matrix"), this::ask);
  }

  /**
   * How far one gets within so many metres of walk.
   *
   * @param start the id of a waypoint
   * @param metres of walk, finite
   * @return the waypoints within reach, the cheapest first
   */
  public List<Reached> reach(long start, double metres) {
    return reach(Collections.singleton(start), metres, Options.NONE);
  }

  /**
   * How far one gets from any of several waypoints within so many metres of walk.
   *
   * @param starts the ids of waypoints
   * @param metres of walk, finite
   * @param options accessibility and venue
   * @return the waypoints within reach, the cheapest first
   */
  public List<Reached> reach(Collection<Long> starts, double metres, Options options) {
    Map<String, Object> request = options.request("reach");
    request.put("from", ids(starts));
    request.put("metres", metres);
    return Answer.list(ask(request).get("reached"), Reached::of);
  }

  /**
   * Destinations and amenities by name, whatever its case and accents.
   *
   * @param text of the name, or part of it; an empty one finds all
   * @return the places, the best match first
   */
  public List<Place> places(String text) {
    return places(text, Options.NONE);
  }

  /**
   * Destinations and amenities by name, whatever its case and accents.
   *
   * @param text of the name, or part of it; an empty one finds all
   * @param options the venue
   * @return the places, the best match first
   */
  public List<Place> places(String text, Options options) {
    Map<String, Object> request = options.request("places");
    request.put("text", Objects.requireNonNull(text, "text"));
    return Answer.list(ask(request).get("places"), Place::of);
  }

  private static Map<String, Object> between(
      String operation, long start, Object goal, Options options) {
    Map<String, Object> request = options.request(operation);
    request.put("from", start);
    request.put("to", goal);
    return request;
  }

  /** A list without null, which nobody changes. */
  private static List<Long> ids(Collection<Long> ids) {
    List<Long> copy = new ArrayList<>(ids);
    copy.forEach(Objects::requireNonNull);
    return Collections.unmodifiableList(copy);
  }

  @Override
  public String toString() {
    return "Venue, " + (isClosed() ? "closed" : "open");
  }
}
