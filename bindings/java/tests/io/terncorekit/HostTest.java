package io.terncorekit;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.sun.net.httpserver.HttpExchange;
import com.sun.net.httpserver.HttpServer;
import java.io.IOException;
import java.net.InetSocketAddress;
import java.nio.charset.StandardCharsets;
import java.nio.file.Path;
import java.util.Collection;
import java.util.List;
import java.util.Map;
import java.util.Queue;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.ConcurrentHashMap;
import java.util.concurrent.ConcurrentLinkedQueue;
import java.util.concurrent.ExecutionException;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.TimeUnit;
import java.util.logging.Handler;
import java.util.logging.LogRecord;
import java.util.logging.Logger;
import java.util.stream.Collectors;
import org.junit.jupiter.api.AfterAll;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.io.TempDir;

/** HTTP, files and the log from the application. */
@Timeout(120)
class HostTest {
  static Plaza.Service service;
  static ExecutorService threads;
  @TempDir Path folder;

  @BeforeAll
  static void begin() throws Exception {
    service = new Plaza.Service();
    threads = Executors.newFixedThreadPool(8);
  }

  @AfterAll
  static void end() {
    service.close();
    threads.shutdown();
  }

  @AfterEach
  void ownAgain() {
    new Host().use();
  }

  static final class InMemory implements FileStore {
    final Map<String, byte[]> files = new ConcurrentHashMap<>();

    @Override
    public byte[] read(String path) {
      return files.get(path);
    }

    @Override
    public void write(String path, byte[] contents) {
      files.put(path, contents);
    }

    @Override
    public boolean remove(String path) {
      return files.remove(path) != null;
    }

    @Override
    public Collection<String> list(String prefix) {
      return files.keySet()
          .stream()
          .filter(each -> each.startsWith(prefix))
          .collect(Collectors.toList());
    }
  }

  @Test
  void httpAndFilesOfTheApplication() throws Exception {
    InMemory store = new InMemory();
    Queue<String> asked = new ConcurrentLinkedQueue<>();
    HttpTransport http = new UrlConnectionTransport(threads);
    HttpTransport noted = request -> {
      asked.add(request.method + " " + request.url);
      return http.send(request);
    };
    new Host().http(noted).files(store).use();
    try (Hub hub = new Hub(service.settings()); Venue plaza = Plaza.open();
         Venue venue = Plaza.taken(hub.load())) {
      assertEquals(plaza.answer(Plaza.ROUTE), venue.answer(Plaza.ROUTE));
    }
    assertTrue(asked.contains("POST " + service.address + "/QRVS/api/auth/token"));
    assertTrue(store.files.values().stream().anyMatch(
        each -> new String(each, StandardCharsets.UTF_8).contains("Linden Plaza")));
    asked.clear();

    new Host().http(noted).files(store).use();
    try (Hub hub = new Hub(service.settings().autoReload(false))) {
      Plaza.taken(hub.load()).close();
    }
    assertTrue(asked.isEmpty());
  }

  TernException loadError() {
    try (Hub hub =
             new Hub(new Hub.Settings("http://127.0.0.1:9", 1, "a", "b").cacheFolder(folder))) {
      return HubTest.errorOf(hub.load());
    }
  }

  @Test
  void whatSendThrowsIsWhy() {
    new Host().http(request -> { throw new IllegalStateException("the cable\nis cut\0"); }).use();
    String expected = "java.lang.IllegalStateException: the cable is cut ";
    assertEquals(expected.trim(), loadError().description.trim());
    new Host().http(request -> CompletableFuture.failedFuture(new IOException("no way"))).use();
    assertEquals("java.io.IOException: no way", loadError().description);
  }

  @Test
  void aResponseThatIsNoneIsAnError() {
    new Host().http(request -> null).use();
    assertFalse(loadError().description.isEmpty());
    new Host().http(request -> CompletableFuture.completedFuture(null)).use();
    assertFalse(loadError().description.isEmpty());
    byte[] text = {'x'};
    new Host()
        .http(request -> CompletableFuture.completedFuture(new HttpResponse(200, text)))
        .use();
    assertFalse(loadError().code.isEmpty());
  }

  @Test
  void closingAHubCancelsWhatIsSent() throws Exception {
    CompletableFuture<HttpResponse> never = new CompletableFuture<>();
    CompletableFuture<Void> sent = new CompletableFuture<>();
    HttpTransport http = new UrlConnectionTransport(threads);
    new Host()
        .http(request -> {
          if (request.method.equals("POST")) {
            return http.send(request); // for a token, which all hubs share
          }
          sent.complete(null);
          return never;
        })
        .use();
    Hub hub = new Hub(service.settings().cacheFolder(folder));
    CompletableFuture<Venue> load = hub.load();
    Plaza.taken(sent);
    hub.close();
    HubTest.errorOf(load);
    Plaza.await("it is cancelled", never::isCancelled);
  }

  @Test
  void filesThatFailAreToldOfAndPassedOver() throws Exception {
    FileStore broken = new FileStore() {
      @Override
      public byte[] read(String path) throws IOException {
        throw new IOException("no disk");
      }

      @Override
      public void write(String path, byte[] contents) {
        throw new IllegalStateException("no disk");
      }

      @Override
      public boolean remove(String path) {
        throw new StackOverflowError();
      }

      @Override
      public Collection<String> list(String prefix) {
        return null;
      }
    };
    Queue<String> told = new ConcurrentLinkedQueue<>();
    Handler handler = new Handler() {
      @Override
      public void publish(LogRecord line) {
        told.add(line.getThrown().getMessage() + "");
      }

      @Override
      public void flush() {}

      @Override
      public void close() {}
    };
    Logger logger = Logger.getLogger("io.terncorekit");
    logger.addHandler(handler);
    logger.setUseParentHandlers(false);
    new Host().files(broken).use();
    try (Hub hub = new Hub(service.settings())) {
      Plaza.taken(hub.load()).close();
    } finally {
      logger.removeHandler(handler);
      logger.setUseParentHandlers(true);
    }
    assertTrue(told.contains("no disk"));
  }

  @Test
  void theLogIsTheApplications() {
    Queue<String> lines = new ConcurrentLinkedQueue<>();
    new Host()
        .log(line -> {
          lines.add(line);
          throw new IllegalStateException("is passed over");
        })
        .use();
    Logger.getLogger("io.terncorekit").setUseParentHandlers(false);
    byte[] document = ("{\"id\":1,\"strange\":1,\"buildings\":{\"items\":[7]},"
        + "\"venues\":{\"items\":[{\"id\":1}]}}")
                          .getBytes(StandardCharsets.UTF_8);
    assertThrows(TernException.class, () -> Venue.fromDocuments(path -> document));
    Logger.getLogger("io.terncorekit").setUseParentHandlers(true);
    assertFalse(lines.isEmpty());
  }

  static HttpServer server(Map<String, String> redirects, Queue<String> asked) throws IOException {
    HttpServer server = HttpServer.create(new InetSocketAddress("127.0.0.1", 0), 0);
    server.createContext("/", exchange -> answer(exchange, redirects, asked));
    server.start();
    return server;
  }

  static void answer(HttpExchange exchange, Map<String, String> redirects, Queue<String> asked)
      throws IOException {
    String path = exchange.getRequestURI().getPath();
    asked.add(exchange.getRequestMethod() + " " + path + " "
        + exchange.getRequestHeaders().getOrDefault("Authorization", List.of()) + " "
        + exchange.getRequestBody().readAllBytes().length);
    String to = redirects.get(path);
    if (to != null) {
      exchange.getResponseHeaders().add("Location", to.substring(4));
      exchange.sendResponseHeaders(Integer.parseInt(to.substring(0, 3)), -1);
    } else {
      byte[] said = path.getBytes(StandardCharsets.UTF_8);
      exchange.sendResponseHeaders(path.equals("/gone") ? 404 : 200, said.length);
      exchange.getResponseBody().write(said);
    }
    exchange.close();
  }

  static HttpResponse sent(String method, String url, byte[] body) throws Exception {
    return Plaza.taken(new UrlConnectionTransport(threads).send(
        new HttpRequest(method, url, List.of(Map.entry("Authorization", "secret")), body)));
  }

  @Test
  void redirectsAreFollowedAndSecretsStayAtTheirOrigin() throws Exception {
    Queue<String> asked = new ConcurrentLinkedQueue<>();
    Map<String, String> redirects = new ConcurrentHashMap<>();
    HttpServer first = server(redirects, asked);
    HttpServer other = server(Map.of(), asked);
    String there = "http://127.0.0.1:" + other.getAddress().getPort();
    redirects.putAll(Map.of("/a", "302 /b", "/c", "307 /b", "/away", "301 " + there + "/there",
        "/carry", "308 " + there + "/there", "/round", "302 /round", "/file", "302 file:///etc"));
    String here = "http://127.0.0.1:" + first.getAddress().getPort();
    byte[] body = {1, 2};
    try {
      HttpResponse followed = sent("POST", here + "/a", body);
      assertEquals("/b", new String(followed.body, StandardCharsets.UTF_8));
      assertFalse(followed.leftOrigin);
      sent("POST", here + "/c", body);
      assertTrue(sent("GET", here + "/away", null).leftOrigin);
      assertEquals(404, sent("GET", here + "/gone", null).status);
      assertEquals(List.of("POST /a [secret] 2", "GET /b [secret] 0", "POST /c [secret] 2",
                       "POST /b [secret] 2", "GET /away [secret] 0", "GET /there [] 0",
                       "GET /gone [secret] 0"),
          List.copyOf(asked));
      for (String wrong : List.of("/carry", "/round", "/file")) {
        assertThrows(ExecutionException.class, () -> sent("POST", here + wrong, body), wrong);
      }
    } finally {
      first.stop(0);
      other.stop(0);
    }
  }

  @Test
  void aProgramThatEndsLetsGo() throws Exception {
    Process program = new ProcessBuilder(ProcessHandle.current().info().command().orElse("java"),
        "-Xcheck:jni", "-cp", System.getProperty("java.class.path"),
        "-Dterncorekit.library=" + System.getProperty("terncorekit.library"),
        EndingProgram.class.getName())
                          .redirectErrorStream(true)
                          .start();
    String said = new String(program.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
    assertEquals(0, program.waitFor(), said);
    assertFalse(said.contains("WARNING"), said);
  }

  @Test
  void aProgramThatEndsWaitsForFilesThatAreRead() throws Exception {
    Process program = new ProcessBuilder(
        ProcessHandle.current().info().command().orElse("java"),
        "-cp", System.getProperty("java.class.path"),
        "-Dterncorekit.library=" + System.getProperty("terncorekit.library"),
        SlowProgram.class.getName(), service.address).redirectErrorStream(true).start();
    boolean hasEnded = program.waitFor(30, TimeUnit.SECONDS);
    program.destroyForcibly().waitFor();
    assertTrue(hasEnded);
    assertEquals(0, program.exitValue());
  }

  /** Ends while the library reads and writes files, each of which takes a while. */
  static final class SlowProgram {
    public static void main(String[] words) throws Exception {
      CompletableFuture<Void> asked = new CompletableFuture<>();
      FileStore slow = new FileStore() {
        @Override
        public byte[] read(String path) {
          sleep();
          return null;
        }

        @Override
        public void write(String path, byte[] contents) {
          asked.complete(null);
          sleep();
        }

        @Override
        public boolean remove(String path) {
          sleep();
          return false;
        }

        @Override
        public Collection<String> list(String prefix) {
          return List.of();
        }
      };
      new Host().files(slow).log(line -> {}).use();
      new Hub(new Hub.Settings(words[0], 1, "local", "local")).load();
      asked.get();
    }

    static void sleep() {
      try {
        Thread.sleep(200);
      } catch (InterruptedException thrown) {
        Thread.currentThread().interrupt();
      }
    }
  }

  /** Ends while a load is under way, with a host, and without closing anything. */
  static final class EndingProgram {
    public static void main(String[] words) throws Exception {
      CompletableFuture<Void> asked = new CompletableFuture<>();
      new Host()
          .http(request -> {
            asked.complete(null);
            return new CompletableFuture<>();
          })
          .files(new InMemory())
          .log(line -> {})
          .use();
      Hub hub = new Hub(new Hub.Settings("http://127.0.0.1:9", 1, "a", "b"));
      hub.load();
      Venue venue = Plaza.open();
      venue.route(22001, 14016);
      asked.get();
    }
  }
}
