package io.terncorekit;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.Map;
import org.junit.jupiter.api.Test;

class JsonTest {
  @Test
  void readsEveryKindOfValue() {
    Object value = Json.read(" {\"a\":[1,-2.5,1e3,true,false,null,\"x\"],\"b\":{},\"c\":[ ] } ");
    assertEquals(List.of(), Answer.fields(value).get("c"));
    assertEquals(Map.of(), Answer.fields(value).get("b"));
    assertEquals(
        Arrays.asList(1L, -2.5, 1000.0, true, false, null, "x"), Answer.fields(value).get("a"));
  }

  @Test
  void readsWholeNumbersOf64BitsAndWiderOnesAsDoubles() {
    assertEquals(Long.MAX_VALUE, Json.read("9223372036854775807"));
    assertEquals(Long.MIN_VALUE, Json.read("-9223372036854775808"));
    assertEquals(9223372036854775808.0, Json.read("9223372036854775808"));
  }

  @Test
  void readsEscapes() {
    assertEquals("\"\\/\b\f\n\r\t\u00e9\ud83d\ude00",
        Json.read("\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e9\\ud83d\\ude00\""));
  }

  @Test
  void refusesWhatIsNone() {
    String deep = "[".repeat(100_000);
    for (String text : List.of("", "{", "[1", "[1,]", "{\"a\"}", "{a:1}", "tru", "1 2", "\"",
             "\"\\", "\"\\u12\"", "\"\\x\"", "-", "1e", "{} x", "+", deep)) {
      assertThrows(IllegalArgumentException.class, () -> Json.read(text), text);
    }
  }

  @Test
  void whatWasReadDoesNotChange() {
    Map<String, Object> map = Json.object("{\"a\":[1]}");
    assertThrows(UnsupportedOperationException.class, () -> map.put("b", 1));
    assertThrows(UnsupportedOperationException.class, () -> ((List<?>) map.get("a")).clear());
  }

  @Test
  void writesWhatItReads() {
    String text = "{\"a\":[1,-2.5,true,null,\"x\\\"\\\\\\u000a\u00e9\"],\"b\":{},\"c\":[]}";
    assertEquals(text, Json.write(Json.read(text)));
  }

  @Test
  void refusesWhatCannotBeWritten() {
    List<Object> itself = new ArrayList<>();
    itself.add(itself);
    for (Object value : List.of(Double.NaN, Float.POSITIVE_INFINITY, 'x', new int[0],
             Collections.singletonMap(1, 1), Collections.singletonMap(null, 1), itself)) {
      assertThrows(IllegalArgumentException.class, () -> Json.write(value));
    }
  }
}
