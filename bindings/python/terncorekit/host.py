"""What a program may provide in place of what the library brings: HTTP, files, the log."""

from __future__ import annotations

import atexit
import itertools
import logging
from concurrent.futures import ThreadPoolExecutor
from ctypes import POINTER, Structure, byref, c_bool, c_char_p, c_int32, c_size_t, c_void_p
from ctypes import CFUNCTYPE, sizeof, string_at
from dataclasses import dataclass
from typing import Any, Callable, Mapping, MutableMapping

from terncorekit import _ending
from terncorekit._calls import call
from terncorekit._library import library

_log = logging.getLogger(__name__)


@dataclass(frozen=True)
class HttpRequest:
    """What is asked of a server."""

    method: str
    #: Absolute, percent-encoded.
    url: str
    #: Names may come more than once.
    headers: tuple[tuple[str, str], ...]
    #: To be sent as it is; None for none.
    body: bytes | None


@dataclass(frozen=True)
class HttpResponse:
    """What came of a request."""

    #: The HTTP status.
    status: int
    #: Decompressed; None when none came.
    body: bytes | None = None
    #: Whether a redirect led to another scheme, host or port on the way. Such an answer is used
    #: but not kept.
    left_origin: bool = False


#: Sends a request to the service, and not to a local cache, follows redirects, and returns when
#: there is an answer. What it raises is why there is none. Called on several threads at once.
Send = Callable[[HttpRequest], HttpResponse]


def use_host(
    *,
    send: Send | None = None,
    files: MutableMapping[str, bytes] | None = None,
    log: Callable[[str], Any] | None = None,
) -> None:
    """Takes from the program what is given, and from the library what is not.

    To be called before the first hub: hubs that are open keep what they were opened with. `files`
    keeps what is loaded, files by their paths; `log` takes a line of the log, which never holds a
    secret. Both may be called from any thread. What they raise goes to the log of Python.

    >>> import logging, terncorekit
    >>> terncorekit.use_host(log=logging.getLogger("maps").warning)
    >>> terncorekit.use_host()
    """
    if send is None and files is None and log is None:
        call(library().tern_set_host, None)
        return
    number = next(_numbers)
    kept = _hosts[number] = _Kept(send, files, log)
    _ending.note(kept)
    try:
        call(library().tern_set_host, byref(_struct(number, kept)))
    except BaseException:
        _release(number)
        raise


@dataclass(frozen=True, eq=False)
class _Kept:
    """A host as long as the library may call it."""

    send: Send | None
    files: MutableMapping[str, bytes] | None
    log: Callable[[str], Any] | None


# By the number that goes through the library in place of an address. The functions that are called
# from there live as long as the program: the library can never call one that has gone.
_hosts: dict[int, _Kept] = {}
_numbers = itertools.count(1)
_pool: ThreadPoolExecutor | None = None


class _Request(Structure):
    _fields_ = [
        ("size", c_size_t),
        ("method", c_char_p),
        ("url", c_char_p),
        ("headers", POINTER(c_char_p)),
        ("header_count", c_size_t),
        ("body", c_void_p),
        ("body_size", c_size_t),
    ]


class _Response(Structure):
    _fields_ = [
        ("size", c_size_t),
        ("status", c_int32),
        ("left_origin", c_bool),
        ("body", c_char_p),
        ("body_size", c_size_t),
        ("error", c_char_p),
    ]


def _release(number: int) -> None:
    _ending.forget(_hosts.pop(number, None))


def _http_send(number: int, given: Any, exchange: int) -> None:
    try:
        send = _hosts[number].send
        assert send is not None
        _threads().submit(_exchange, send, _request_of(given.contents), exchange)
    except Exception as error:
        _complete(exchange, HttpResponse(0), _line_of(error))


def _threads() -> ThreadPoolExecutor:
    global _pool
    if _pool is None:
        _pool = ThreadPoolExecutor(8, thread_name_prefix="terncorekit-http")
    return _pool


def _request_of(given: _Request) -> HttpRequest:
    texts = [given.headers[i].decode("latin-1") for i in range(2 * given.header_count)]
    body = None if given.body is None else string_at(given.body, given.body_size)
    headers = tuple(zip(texts[::2], texts[1::2]))
    return HttpRequest(given.method.decode(), given.url.decode(), headers, body)


def _exchange(send: Send, request: HttpRequest, exchange: int) -> None:
    try:
        response = send(request)
        body = response.body
        if body is not None and not isinstance(body, bytes):
            raise TypeError("the body of a response is bytes")
        _complete(exchange, response, None)
    except Exception as error:
        _complete(exchange, HttpResponse(0), _line_of(error))


def _complete(exchange: int, response: HttpResponse, error: bytes | None) -> None:
    body = response.body
    size = 0 if body is None else len(body)
    given = _Response(sizeof(_Response), response.status, response.left_origin, body, size, error)
    # It fails for an exchange that the library has ended meanwhile, which is nobody's loss.
    library().tern_http_complete(exchange, byref(given), None)


def _line_of(error: Exception) -> bytes:
    line = " ".join(f"{type(error).__name__}: {error}".split()).replace("\0", "")
    return line.encode("utf-8", "replace")


def _files(number: int) -> MutableMapping[str, bytes]:
    files = _hosts[number].files
    assert files is not None
    return files


def _file_read(number: int, path: bytes, sink: int) -> None:
    contents = _attempt(lambda: _files(number).get(path.decode()))
    if contents is not None:
        _attempt(lambda: call(library().tern_give, sink, bytes(contents), len(contents)))


def _file_write(number: int, path: bytes, contents: int | None, size: int) -> bool:
    def write() -> bool:
        _files(number)[path.decode()] = string_at(contents, size) if contents else b""
        return True

    return _attempt(write) or False


def _file_remove(number: int, path: bytes) -> bool:
    return _attempt(lambda: _files(number).pop(path.decode(), None) is not None) or False


def _file_list(number: int, prefix: bytes, sink: int) -> None:
    def give_all() -> None:
        for path in list(_files(number)):
            name = path.encode()
            if name.startswith(prefix):
                call(library().tern_give, sink, name, len(name))

    _attempt(give_all)


def _log_line(number: int, line: bytes) -> None:
    _attempt(lambda: _taking(number)(line.decode("utf-8", "replace")))


def _taking(number: int) -> Callable[[str], Any]:
    take = _hosts[number].log
    assert take is not None
    return take


def _attempt(work: Callable[[], Any]) -> Any:
    """What it returns; None when it raised, since nothing may be raised through the library."""
    try:
        return work()
    except Exception:
        _log.exception("a function of the host raised")
        return None


_Release = CFUNCTYPE(None, c_void_p)
_HttpSend = CFUNCTYPE(None, c_void_p, POINTER(_Request), c_void_p)
_FileRead = CFUNCTYPE(None, c_void_p, c_char_p, c_void_p)
_FileWrite = CFUNCTYPE(c_bool, c_void_p, c_char_p, c_void_p, c_size_t)
_FileRemove = CFUNCTYPE(c_bool, c_void_p, c_char_p)
_FileList = CFUNCTYPE(None, c_void_p, c_char_p, c_void_p)
_Log = CFUNCTYPE(None, c_void_p, c_char_p)

# In the order of the struct: name, kind, function.
_CALLBACKS: list[tuple[str, Any, Any]] = [
    ("release", _Release, _Release(_release)),
    ("http_send", _HttpSend, _HttpSend(_http_send)),
    # Nobody waits any more; what is sent nevertheless ends in an exchange that is none.
    ("http_cancel", c_void_p, None),
    ("file_read", _FileRead, _FileRead(_file_read)),
    ("file_write", _FileWrite, _FileWrite(_file_write)),
    ("file_remove", _FileRemove, _FileRemove(_file_remove)),
    ("file_list", _FileList, _FileList(_file_list)),
    ("log", _Log, _Log(_log_line)),
]


class _Host(Structure):
    _fields_ = [
        ("size", c_size_t),
        ("context", c_void_p),
        *((name, kind) for name, kind, _ in _CALLBACKS),
    ]


def _struct(number: int, kept: _Kept) -> _Host:
    given: Mapping[str, Any] = {"http": kept.send, "file": kept.files, "log": kept.log}
    struct = _Host(sizeof(_Host), number)
    for name, _, function in _CALLBACKS:
        part = name.split("_")[0]
        if function is not None and (part == "release" or given[part] is not None):
            setattr(struct, name, function)
    return struct


@atexit.register
def _let_go() -> None:
    """Python goes: its functions are not called any more."""
    if _hosts:
        library().tern_set_host(None, None)
