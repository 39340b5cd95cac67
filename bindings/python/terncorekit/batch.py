"""Many requests, answered side by side and in order."""

from __future__ import annotations

import json
from collections import deque
from concurrent.futures import Future, ThreadPoolExecutor
from typing import Any, Callable, Iterable, Iterator, Mapping, Sized, TypeVar, Union

from terncorekit._arguments import request_text
from terncorekit.progress import Progress, reporting

#: A request as a mapping, or its text in JSON.
Request = Union[str, Mapping[str, Any]]
Asked = TypeVar("Asked", bound=Request)

#: The answer to a request in JSON.
AnswerText = Callable[[str], str]

# How many are read ahead of the answer that is waited for, for each thread.
AHEAD = 64


def may_block(text: str) -> bool:
    """Whether a request may change what others are answered, told by its text.

    Never false for one that blocks a link or a waypoint. A letter that is written as its number may
    be one of "block".
    """
    return '"block' in text or "\\u00" in text


def answers_of(
    answer: AnswerText,
    requests: Iterable[Any],
    jobs: int,
    progress: Progress,
    has_blocks: Callable[[], bool],
) -> Iterator[Any]:
    """The answers, a mapping's as a dict and a text's as a text."""
    total = len(requests) if isinstance(requests, Sized) else None
    asked = (request for request in requests if not _is_blank(request))
    with reporting(progress, total, "answers") as report:
        answers = (
            _one_by_one(answer, asked)
            if jobs == 1
            else _side_by_side(answer, asked, jobs, has_blocks)
        )
        for done, each in enumerate(answers, 1):
            report(done)
            yield each


def _is_blank(request: Request) -> bool:
    return isinstance(request, str) and not request.strip(" \t\r\n")


def _text_of(request: Request) -> str:
    if isinstance(request, str):
        return request
    if isinstance(request, Mapping):
        return request_text(request)
    raise TypeError(f"a request is a mapping or a text, not {type(request).__name__}")


def _as_asked(request: Request, text: str) -> Any:
    return text if isinstance(request, str) else json.loads(text)


def _one_by_one(answer: AnswerText, requests: Iterable[Request]) -> Iterator[Any]:
    for request in requests:
        yield _as_asked(request, answer(_text_of(request)))


def _side_by_side(
    answer: AnswerText, requests: Iterable[Request], jobs: int, has_blocks: Callable[[], bool]
) -> Iterator[Any]:
    """Blocks are barriers: what stands before one is answered without it, what stands behind it
    with it. While there are blocks, so are alternatives, which lift blocks on what they try.
    """
    waiting: deque[tuple[Request, Future[str]]] = deque()

    def first() -> Any:
        request, future = waiting.popleft()
        return _as_asked(request, future.result())

    pool = ThreadPoolExecutor(jobs, thread_name_prefix="terncorekit")
    try:
        for request, text, failure in _texts_of(requests):
            is_alone = may_block(text) or (has_blocks() and '"alternatives"' in text)
            while waiting and (
                is_alone or failure or len(waiting) >= AHEAD * jobs or waiting[0][1].done()
            ):
                yield first()
            if failure:
                raise failure
            waiting.append((request, pool.submit(answer, text)))
            if is_alone:
                yield first()
        while waiting:
            yield first()
    finally:
        pool.shutdown(cancel_futures=True)


def _texts_of(
    requests: Iterable[Request],
) -> Iterator[tuple[Request, str, Exception | None]]:
    """Requests with their texts, and at the end what kept a further one from being read: the
    answers to those before it come first.
    """
    try:
        for request in requests:
            yield request, _text_of(request), None
    except Exception as failure:
        yield "", "", failure
