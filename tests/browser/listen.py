# Answers every request on a port of its own with nothing, and writes down what was asked for: the
# port on the first line of standard output, then a path a line.
import http.server


class Listener(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        print(self.path, flush=True)
        self.send_response(404)
        self.send_header("Content-Length", "0")
        self.end_headers()

    do_POST = do_HEAD = do_OPTIONS = do_GET

    def log_message(self, *words):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Listener)
print(server.server_port, flush=True)
server.serve_forever()
