package io.terncorekit;

import java.util.ArrayList;
import java.util.Collection;
import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * JSON as maps, lists, strings, longs, doubles, booleans and null: what the library answers is
 * read, and what it is asked is written. Neither Java nor Android brings a reader that the other
 * has.
 */
final class Json {
  /** Deeper than any request or answer; what holds itself ends here. */
  private static final int DEEPEST = 200;

  private final String text;
  private int at;

  private Json(String text) {
    this.text = text;
  }

  /** REQUIRES: the text is an object, as all answers are. */
  static Map<String, Object> object(String text) {
    Object value = read(text);
    if (!(value instanceof Map)) {
      throw new IllegalArgumentException("no object: " + text);
    }
    return Answer.fields(value);
  }

  /** Lists and maps in it cannot be changed. */
  static Object read(String text) {
    Json reader = new Json(text);
    try {
      Object value = reader.value(0);
      if (reader.next() == 0) {
        return value;
      }
    } catch (StringIndexOutOfBoundsException | NumberFormatException broken) {
      throw reader.broken();
    }
    throw reader.broken();
  }

  private IllegalArgumentException broken() {
    return new IllegalArgumentException("no JSON at " + at);
  }

  /** The next character that is not blank; 0 at the end. */
  private char next() {
    while (at < text.length() && " \t\r\n".indexOf(text.charAt(at)) >= 0) {
      ++at;
    }
    return at < text.length() ? text.charAt(at) : 0;
  }

  private boolean took(char wanted) {
    boolean found = next() == wanted;
    at += found ? 1 : 0;
    return found;
  }

  private void take(char wanted) {
    if (!took(wanted)) {
      throw broken();
    }
  }

  private Object value(int depth) {
    if (depth > DEEPEST) {
      throw broken();
    }
    switch (next()) {
      case '{':
        return members(depth);
      case '[':
        return elements(depth);
      case '"':
        return string();
      case 't':
        return word("true", true);
      case 'f':
        return word("false", false);
      case 'n':
        return word("null", null);
      default:
        return number();
    }
  }

  private Map<String, Object> members(int depth) {
    Map<String, Object> map = new LinkedHashMap<>();
    take('{');
    if (!took('}')) {
      do {
        next();
        String name = string();
        take(':');
        map.put(name, value(depth + 1));
      } while (took(','));
      take('}');
    }
    return Collections.unmodifiableMap(map);
  }

  private List<Object> elements(int depth) {
    List<Object> list = new ArrayList<>();
    take('[');
    if (!took(']')) {
      do {
        list.add(value(depth + 1));
      } while (took(','));
      take(']');
    }
    return Collections.unmodifiableList(list);
  }

  private Object word(String word, Object value) {
    if (!text.startsWith(word, at)) {
      throw broken();
    }
    at += word.length();
    return value;
  }

  private Object number() {
    int begin = at;
    boolean isWhole = true;
    for (; at < text.length() && "+-.0123456789Ee".indexOf(text.charAt(at)) >= 0; ++at) {
      isWhole &= "+.Ee".indexOf(text.charAt(at)) < 0;
    }
    String digits = text.substring(begin, at);
    if (isWhole && digits.length() < 19) {
      return Long.valueOf(digits);
    }
    return isWhole ? wide(digits) : Double.valueOf(digits);
  }

  private static Object wide(String digits) {
    try {
      return Long.valueOf(digits);
    } catch (NumberFormatException tooWide) {
      return Double.valueOf(digits);
    }
  }

  private String string() {
    take('"');
    int begin = at;
    while (text.charAt(at) != '"' && text.charAt(at) != '\\') {
      ++at;
    }
    if (text.charAt(at) == '"') {
      return text.substring(begin, at++);
    }
    StringBuilder out = new StringBuilder(text.substring(begin, at));
    while (text.charAt(at) != '"') {
      char unit = text.charAt(at++);
      out.append(unit == '\\' ? escaped() : unit);
    }
    ++at;
    return out.toString();
  }

  private char escaped() {
    char kind = text.charAt(at++);
    if (kind == 'u') {
      at += 4;
      return (char) Integer.parseInt(text.substring(at - 4, at), 16);
    }
    int known = "\"\\/bfnrt".indexOf(kind);
    if (known < 0) {
      throw broken();
    }
    return "\"\\/\b\f\n\r\t".charAt(known);
  }

  /** An IllegalArgumentException where it cannot be written. */
  static String write(Object value) {
    StringBuilder out = new StringBuilder();
    write(value, out, 0);
    return out.toString();
  }

  private static void write(Object value, StringBuilder out, int depth) {
    if (depth > DEEPEST) {
      throw new IllegalArgumentException("too deep for JSON");
    }
    if (value instanceof Map) {
      writeMembers((Map<?, ?>) value, out, depth);
    } else if (value instanceof Collection) {
      char before = '[';
      for (Object each : (Collection<?>) value) {
        out.append(before);
        write(each, out, depth + 1);
        before = ',';
      }
      out.append(before == '[' ? "[]" : "]");
    } else if (value instanceof String) {
      writeString((String) value, out);
    } else if (value == null || value instanceof Boolean) {
      out.append(value);
    } else if (value instanceof Number) {
      out.append(number((Number) value));
    } else {
      throw new IllegalArgumentException(value.getClass().getName() + " is none of JSON's");
    }
  }

  private static void writeMembers(Map<?, ?> map, StringBuilder out, int depth) {
    char before = '{';
    for (Map.Entry<?, ?> each : map.entrySet()) {
      if (!(each.getKey() instanceof String)) {
        throw new IllegalArgumentException("the name " + each.getKey() + " is no String");
      }
      out.append(before);
      writeString((String) each.getKey(), out);
      out.append(':');
      write(each.getValue(), out, depth + 1);
      before = ',';
    }
    out.append(before == '{' ? "{}" : "}");
  }

  private static String number(Number value) {
    if (!Double.isFinite(value.doubleValue())) {
      throw new IllegalArgumentException(value + " is not finite");
    }
    return value.toString();
  }

  private static void writeString(String value, StringBuilder out) {
    out.append('"');
    for (int i = 0; i < value.length(); ++i) {
      char unit = value.charAt(i);
      if (unit == '"' || unit == '\\') {
        out.append('\\').append(unit);
      } else if (unit < ' ') {
        out.append(String.format("\\u%04x", (int) unit));
      } else {
        out.append(unit);
      }
    }
    out.append('"');
  }
}
