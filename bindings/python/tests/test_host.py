"""HTTP, files and the log from the program."""

import gc
import logging
import socket
import subprocess
import signal
import sys
import threading
import time
import urllib.error
import urllib.request

import pytest

from terncorekit import HttpResponse, Hub, TernError, Venue, host, use_host

ROUTE = '{"op":"route","from":22001,"to":14016}'


@pytest.fixture(autouse=True)
def own_again():
    """Each test's host is let go when the last that it began has ended, perhaps elsewhere."""
    yield
    use_host()
    for _ in range(1000):
        if not host._hosts:
            return
        time.sleep(0.01)
    pytest.fail("a host is kept")


def options(**more):
    return {"customer_id": 1, "client_id": "local", "client_secret": "local", **more}


def send(request):
    asked = urllib.request.Request(
        request.url, request.body, dict(request.headers), method=request.method)
    try:
        with urllib.request.urlopen(asked) as answer:
            return HttpResponse(answer.status, answer.read())
    except urllib.error.HTTPError as error:
        return HttpResponse(error.code, error.read())


def test_http_and_files_of_the_program(service, shared_venue):
    asked, files = [], {}

    def noted(request):
        asked.append((request.method, request.url))
        return send(request)

    use_host(send=noted, files=files)
    gc.collect()
    with Hub(service, **options()) as hub:
        with hub.load() as venue:
            assert venue.answer(ROUTE) == shared_venue.answer(ROUTE)
    assert ("POST", service + "/QRVS/api/auth/token") in asked
    assert any("/venue/1/building/2/full" in url for _, url in asked)
    assert any(b"Linden Plaza" in contents for contents in files.values())
    asked.clear()

    use_host(send=noted, files=files)
    with Hub(service, **options(auto_reload=False)) as hub:
        hub.load().close()
    assert asked == []


def test_what_send_raises_is_why(tmp_path):
    def fail(request):
        raise ConnectionError("the cable\nis cut\0")

    use_host(send=fail)
    with Hub("http://127.0.0.1:9", **options(cache_folder=tmp_path)) as hub:
        with pytest.raises(TernError) as raised:
            hub.load()
    assert raised.value.description == "ConnectionError: the cable is cut"


@pytest.mark.parametrize("response", [None, 7, HttpResponse(200, "text"), HttpResponse("200")])
def test_a_response_that_is_none_is_an_error(tmp_path, response):
    use_host(send=lambda request: response)
    with Hub("http://127.0.0.1:9", **options(cache_folder=tmp_path)) as hub:
        with pytest.raises(TernError):
            hub.load()


def test_files_that_fail_are_told_of_and_passed_over(service, caplog):
    class Broken(dict):
        def get(self, *_):
            raise OSError("no disk")

        __setitem__ = __iter__ = pop = get

    use_host(files=Broken())
    with caplog.at_level(logging.ERROR), Hub(service, **options()) as hub:
        hub.load().close()
    assert "no disk" in caplog.text


def test_log_of_the_program():
    lines = []
    use_host(log=lines.append)
    document = '{"id":1,"strange":1,"buildings":{"items":[7]},"venues":{"items":[{"id":1}]}}'
    with pytest.raises(TernError):
        Venue.from_documents(lambda path: document)
    assert lines
    assert all(isinstance(line, str) for line in lines)


def test_a_load_that_is_interrupted_leaves_nothing(tmp_path):
    """The service takes the connection and says nothing."""
    class Interrupt(Exception):
        pass

    def interrupt(*_):
        raise Interrupt

    with socket.create_server(("127.0.0.1", 0)) as listener:
        with Hub(f"http://127.0.0.1:{listener.getsockname()[1]}",
                 **options(cache_folder=tmp_path)) as hub:
            before = signal.signal(signal.SIGALRM, interrupt)
            signal.setitimer(signal.ITIMER_REAL, 0.2)
            try:
                with pytest.raises(Interrupt):
                    hub.load()
            finally:
                signal.setitimer(signal.ITIMER_REAL, 0)
                signal.signal(signal.SIGALRM, before)


def test_closing_a_hub_ends_its_load(tmp_path):
    asked, release = threading.Event(), threading.Event()

    def never(request):
        asked.set()
        release.wait(60)
        return HttpResponse(500)

    use_host(send=never)
    hub = Hub("http://127.0.0.1:9", **options(cache_folder=tmp_path))
    closing = threading.Thread(target=lambda: asked.wait(60) and hub.close())
    closing.start()
    with pytest.raises(TernError, match="closed"):
        hub.load()
    closing.join()
    release.set()


def test_a_program_that_ends_lets_go(tmp_path):
    program = """
import terncorekit, threading
asked = threading.Event()
def never(request):
    asked.set()
    raise OSError
terncorekit.use_host(send=never, files={}, log=print)
hub = terncorekit.Hub("http://127.0.0.1:9", customer_id=1, client_id="a", client_secret="b")
threading.Thread(target=hub.load, daemon=True).start()
asked.wait()
"""
    assert subprocess.run([sys.executable, "-c", program], capture_output=True).returncode == 0
