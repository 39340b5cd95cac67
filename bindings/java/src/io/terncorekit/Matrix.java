package io.terncorekit;

import java.util.ArrayList;
import java.util.Collection;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import java.util.function.Function;

/** How far it is from each of many waypoints to each of many: a row for each start. */
public final class Matrix {
  /** Of one request: its rows are in memory as text and as objects, too. */
  private static final int PAIRS_AT_ONCE = 250_000;

  /** The ids of the waypoints that the rows begin at. */
  public final List<Long> starts;

  /** The ids of the waypoints that the columns lead to. */
  public final List<Long> goals;

  private final double[][] costs;
  private final double[][] millimetres;

  private Matrix(Collection<Long> starts, Collection<Long> goals) {
    this.starts = Collections.unmodifiableList(new ArrayList<>(starts));
    this.goals = Collections.unmodifiableList(new ArrayList<>(goals));
    costs = new double[starts.size()][];
    millimetres = new double[starts.size()][];
  }

  /** Asked some rows at a time. */
  static Matrix of(Collection<Long> starts, Collection<Long> goals, Map<String, Object> request,
      Function<Map<String, Object>, Map<String, Object>> ask) {
    Matrix matrix = new Matrix(starts, goals);
    int together = Math.max(1, PAIRS_AT_ONCE / Math.max(1, goals.size()));
    int first = 0;
    do { // without starts, too, so that a request that is wrong is refused
      int end = Math.min(matrix.starts.size(), first + together);
      request.put("from", matrix.starts.subList(first, end));
      request.put("to", matrix.goals);
      Map<String, Object> rows = ask.apply(request);
      put((List<?>) rows.get("costs"), matrix.costs, first);
      put((List<?>) rows.get("mmDistances"), matrix.millimetres, first);
      first = end;
    } while (first < matrix.starts.size());
    return matrix;
  }

  private static void put(List<?> rows, double[][] table, int first) {
    for (int i = 0; i < rows.size(); ++i) {
      table[first + i] =
          ((List<?>) rows.get(i))
              .stream()
              .mapToDouble(each -> each == null ? Double.POSITIVE_INFINITY : Answer.real(each))
              .toArray();
    }
  }

  /**
   * What the cheapest way costs.
   *
   * @param start the index of a start
   * @param goal the index of a goal
   * @return map units, with what lifts and the like add to them; infinite where there is no way
   */
  public double cost(int start, int goal) {
    return costs[start][goal];
  }

  /**
   * How long that way is.
   *
   * @param start the index of a start
   * @param goal the index of a goal
   * @return millimetres of walk; infinite where there is no way
   */
  public double millimetres(int start, int goal) {
    return millimetres[start][goal];
  }
}
