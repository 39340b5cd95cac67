package io.terncorekit;

import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import java.util.function.Function;

/** What was answered, as a value: two are equal when they were made of the same JSON. */
public abstract class Answer {
  /** The JSON that it was made of: maps, lists, strings, longs, doubles, booleans and null. */
  public final Object raw;

  Answer(Object raw) {
    this.raw = raw;
  }

  @Override
  public final boolean equals(Object other) {
    return other != null && other.getClass() == getClass() && ((Answer) other).raw.equals(raw);
  }

  @Override
  public final int hashCode() {
    return raw.hashCode();
  }

  /** What it is, in a line or in lines; for people. */
  @Override
  public String toString() {
    return Json.write(raw);
  }

  @SuppressWarnings("unchecked")
  static Map<String, Object> fields(Object raw) {
    return (Map<String, Object>) raw;
  }

  static Long idOrNull(Object raw) {
    return (Long) raw;
  }

  static double real(Object raw) {
    return ((Number) raw).doubleValue();
  }

  static List<Long> ids(Object raw) {
    return list(raw, each -> (Long) each);
  }

  static <T> List<T> list(Object raw, Function<Object, T> make) {
    List<?> from = (List<?>) raw;
    List<T> made = new ArrayList<>(from.size());
    for (Object each : from) {
      made.add(make.apply(each));
    }
    return Collections.unmodifiableList(made);
  }
}
