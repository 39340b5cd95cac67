"""Plants small faults in the library, one at a time, and sees whether a test notices.

A fault is a change within one line. The changed file is compiled into a folder of its own, so nothing in
the tree is touched, and takes the place of its object when the tests are linked. A change that does not
compile is no fault, and one that leaves the object as it was changes nothing. A template's fault shows where
it is used: the test of the header of its name is compiled again instead.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import random
import re
import shlex
import subprocess
import sys
import threading

ROOT = pathlib.Path.cwd()
BUILD = ROOT / "build/mutants"
KEPT = ROOT / "scripts/mutants-survivors.txt"
# Tests that say nothing of the library that they are linked with, since they run another program, and
# those of what stands above the library and is slow.
ELSEWHERE = ("tests/command/", "tests/tools/generate/", "tests/tools/import/", "tests/tools/service/",
             "tests/tools/tern/picture/")


# --- the faults ---

LITERAL = re.compile(r'R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.S)
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.S)


def blanked(text):
    """The text with literals, comments and preprocessor lines as spaces, of the same length."""
    def spaces(match):
        return re.sub(r"[^\n]", " ", match.group())

    both = re.compile(f"(?:{LITERAL.pattern})|(?:{COMMENT.pattern})", re.S)
    text = both.sub(spaces, text)
    return re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", spaces, text, flags=re.M)


SWAPS = [
    (r" < ", [" <= ", " >= "]), (r" <= ", [" < ", " > "]),
    (r" > ", [" >= ", " <= "]), (r" >= ", [" > ", " < "]),
    (r" == ", [" != "]), (r" != ", [" == "]),
    (r" && ", [" || "]), (r" \|\| ", [" && "]),
    (r" \+ ", [" - "]), (r" - ", [" + "]), (r" \* ", [" + "]),
    (r" \+= ", [" -= "]), (r" -= ", [" += "]), (r"\+\+(?=\w)", ["--"]),
    (r"\bmin\b(?=\()", ["max"]), (r"\bmax\b(?=\()", ["min"]),
    (r"\btrue\b", ["false"]), (r"\bfalse\b", ["true"]),
    (r"(?<=[(!&| ])!(?=[\w(])", [""]),
    (r"\.begin\(\)(?=[,;)])", [".end()"]), (r"\bbreak;", [";"]), (r"\bcontinue;", [";"]),
]
NUMBER = re.compile(r"(?<![\w.])(\d+)(?![\w.'])")
CONDITION = re.compile(r"\b(?:if|while) \(")
RETURN = re.compile(r"\breturn ([^;{}\n]+);")
STATEMENT = re.compile(r"^ +((?!return\b|const\b|auto\b|using\b|static\b|else\b|case\b|break\b|continue\b|if\b|for\b)"
                       r"[\w:\[\]*.>()-]+(?:\(| [+|&-]?= |\+\+)[^{}\n]*;)$|^ +(\+\+[\w.>-]+;)$", re.M)


def closing(text, at):
    """Where the bracket that opens there is closed."""
    depth = 0
    for i in range(at, len(text)):
        depth += {"(": 1, ")": -1}.get(text[i], 0)
        if depth == 0:
            return i
    return len(text)


# Room that is taken ahead is time and no behaviour.
NO_BEHAVIOUR = re.compile(r"static_assert|\.reserve\(|prefetch")


def faults_of(path):
    """Each change as (line, from, to, new text of the file)."""
    text = path.read_text()
    plain = blanked(text)
    found = []

    def add(begin, end, new):
        if NO_BEHAVIOUR.search(text[text.rfind("\n", 0, begin) + 1:end]):
            return
        changed = text[:begin] + new + text[end:]
        line = text.count("\n", 0, begin) + 1
        lines = changed.split("\n")
        found.append((line, text.split("\n")[line - 1].strip(), lines[line - 1].strip(), changed))

    for pattern, replacements in SWAPS:
        for match in re.finditer(pattern, plain):
            for new in replacements:
                add(match.start(), match.end(), new)
    for match in NUMBER.finditer(plain):
        number = int(match.group(1))
        add(match.start(), match.end(), str(number + 1))
        if number > 0:
            add(match.start(), match.end(), str(number - 1))
    for match in CONDITION.finditer(plain):
        end = closing(plain, match.end() - 1)
        condition = text[match.end():end]
        if " = " not in condition and "\n" not in condition:
            add(match.end(), end, "!(" + condition + ")")
    for match in RETURN.finditer(plain):
        value = text[match.start(1):match.end(1)]
        add(match.start(1), match.end(1), "{}")
        if re.search(r" (<|>|<=|>=|==|!=|&&|\|\|) |^!|^is[A-Z]", value):
            add(match.start(1), match.end(1), "!(" + value + ")")
    for match in STATEMENT.finditer(plain):
        group = 1 if match.group(1) else 2
        add(match.start(group), match.end(group), ";")
    return found


# --- the build ---

def run(words, **more):
    return subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **more)


class Tests:
    """The test program: its objects, how they are linked, and which tests are about which source."""

    def __init__(self):
        commands = json.loads((BUILD / "compile_commands.json").read_text())
        self.compile = {}
        for entry in commands:
            source = os.path.relpath(entry["file"], ROOT)
            words = shlex.split(entry["command"])
            if "header_checks" in source or "tern_no_exceptions" in entry["command"]:
                continue
            self.compile.setdefault(source, words)
        link = run(["ninja", "-C", str(BUILD), "-t", "commands", "-s", "tern_tests"]).stdout.decode()
        words = shlex.split(link.strip().split("\n")[-1])
        words = words[words.index(":") + 2:] if words[0] == ":" else words
        words = words[:words.index("&&")] if "&&" in words else words
        self.link = [word for word in words if not word.endswith("libTernCoreKit.a")
                     and "--exclude-libs" not in word]
        self.library = [self.object_of(source) for source in self.compile
                        if "/TernCoreKit.dir/" in self.object_of(source)]
        self.suites = {}
        for source in self.compile:
            if source.endswith("_test.cpp"):
                text = (ROOT / source).read_text()
                self.suites[source] = sorted(set(re.findall(r"^(?:TYPED_)?(?:TEST|TEST_F|TEST_P|RC_GTEST_PROP|RC_GTEST_FIXTURE_PROP|TYPED_TEST)\(\s*(\w+)", text, re.M)))

    def object_of(self, source):
        words = self.compile[source]
        return words[words.index("-o") + 1]

    def test_of(self, source):
        path = pathlib.PurePath(source)
        return "tests/" + str(path.relative_to("TernCoreKit").with_suffix("")) + "_test.cpp"

    def compiled_with(self, source):
        """The source whose object shows a fault in this one: itself, or a header's own test."""
        if source.endswith(".cpp"):
            return source
        test = self.test_of(source)
        return test if test in self.compile else None

    def filters(self, source):
        """The tests to run, one filter after another: its own, its folder's, then all."""
        def filter_of(suites):
            return ":".join(f"{name}.*:*/{name}.*:{name}/*.*:*/{name}/*.*" for name in suites)

        own = self.suites.get(self.test_of(source), [])
        folder = os.path.dirname(self.test_of(source))
        near = [name for test, names in self.suites.items()
                if os.path.dirname(test) == folder or os.path.dirname(test) == os.path.dirname(folder)
                for name in names]
        far = [name for test, names in self.suites.items() if test.startswith(ELSEWHERE)
               for name in names]
        steps = [filter_of(own), filter_of(near)]
        return [step for step in steps if step] + ["*-" + filter_of(far)]


class Worker:
    """Tries one fault at a time in a folder of its own."""

    def __init__(self, tests, number):
        self.tests = tests
        self.folder = BUILD / "workers" / str(number)
        self.overlay = self.folder / "tree"
        (self.folder / "tmp").mkdir(parents=True, exist_ok=True)

    def compile(self, source, text, out):
        """True when it compiles. Without a text the source is taken as it is."""
        compiled = self.tests.compiled_with(source)
        words = list(self.tests.compile[compiled])
        if words[0].endswith("ccache"):
            words = words[1:]
        words[words.index("-o") + 1] = str(out)
        for flag in ("-MT", "-MF"):
            if flag in words:
                at = words.index(flag)
                del words[at:at + 2]
        words = [word for word in words if word not in ("-MD", "-Werror") and not word.startswith("-W")]
        words.insert(1, "-w")
        if text is not None:
            place = self.overlay / source
            place.parent.mkdir(parents=True, exist_ok=True)
            place.write_text(text)
            if compiled == source:
                words[words.index("-c") + 1] = str(place)
            words.insert(1, f"-I{self.overlay}")
        done = run(words, cwd=BUILD)
        if text is not None:
            (self.overlay / source).unlink()
        return done.returncode == 0

    def original(self, source):
        """The bytes of the object as it is, compiled in the same way."""
        digest = hashlib.sha1(source.encode()).hexdigest()
        out = BUILD / "originals" / f"{digest}.o"
        with ORIGINALS:
            if not out.exists():
                out.parent.mkdir(exist_ok=True)
                # The name of a file stands in its object.
                text = (ROOT / source).read_text()
                self.compile(source, text, self.folder / "original.o")
                (self.folder / "original.o").rename(out)
        return out.read_bytes()

    def link(self, source, out):
        compiled = self.tests.compiled_with(source)
        old = self.tests.object_of(compiled)
        objects = [word for word in self.tests.library if word != old]
        words = []
        for word in self.tests.link:
            if word != old:
                words.append(word)
        at = words.index("-o")
        words[at + 1] = str(out)
        # First of all, so that what is inline is taken from there.
        first = next(i for i, word in enumerate(words) if word.endswith(".o") and i != at + 1)
        words[first:first] = [str(self.folder / "fault.o"), *objects]
        return run(words + ["-fuse-ld=lld", "-Wl,--threads=1"], cwd=BUILD)

    def passes(self, program, chosen):
        environment = dict(os.environ, TMPDIR=str(self.folder / "tmp"))
        try:
            done = run(["prlimit", f"--cpu={LIMIT}", str(program), "--gtest_brief=1", "--gtest_fail_fast",
                        f"--gtest_filter={chosen}"],
                       cwd=self.folder, timeout=5 * LIMIT, env=environment)
        except subprocess.TimeoutExpired:
            return False
        return done.returncode == 0

    def try_fault(self, source, fault):
        """One of "killed", "survived", "no fault" and "same object"."""
        out = self.folder / "fault.o"
        original = self.original(source)
        if not self.compile(source, fault[3], out):
            return "no fault"
        if out.read_bytes() == original:
            return "same object"
        program = self.folder / "tests"
        linked = self.link(source, program)
        if linked.returncode != 0:
            return "no fault"
        for chosen in self.tests.filters(source):
            if not self.passes(program, chosen):
                return "killed"
        return "survived"


ORIGINALS = threading.Lock()
# Seconds of the processor that the tests may take before a fault counts as one that never ends; five
# times as long by the clock, since a machine has other work too and one that waits takes no processor.
LIMIT = 240


# --- which faults, and what became of them ---

def candidates(tests, folder):
    """Faults of all sources by folder, in an order that only the seed decides."""
    by_folder = {}
    for path in sorted((ROOT / "TernCoreKit").rglob("*.[ch]pp")):
        source = str(path.relative_to(ROOT))
        known = tests.compiled_with(source) in tests.compile
        if not source.startswith(folder) or not known:
            continue
        found = [(source, fault) for fault in faults_of(path)]
        by_folder.setdefault(os.path.dirname(source), []).extend(found)
    for name, found in by_folder.items():
        random.Random(f"{SEED} {name}").shuffle(found)
    return by_folder


def spread(by_folder):
    """All faults in such an order that every beginning has of each folder as much as it is large."""
    keyed = []
    for name, found in by_folder.items():
        keyed += [((i + 0.5) / len(found), name, i, fault) for i, fault in enumerate(found)]
    return [fault for _, _, _, fault in sorted(keyed, key=lambda entry: entry[:3])]


def known_survivors():
    """(source, line of source, changed line): the reason why it changes nothing."""
    known = {}
    if KEPT.exists():
        for block in KEPT.read_text().split("\n\n"):
            lines = [line for line in block.split("\n") if line and not line.startswith("#")]
            if len(lines) >= 4:
                known[lines[0], lines[1][2:], lines[2][2:]] = " ".join(lines[3:])
    return known


SEED = 1


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("count", nargs="?", type=int, default=300)
    parser.add_argument("folder", nargs="?", default="TernCoreKit")
    words = parser.parse_args()
    tests = Tests()
    queue = iter(spread(candidates(tests, words.folder)))
    known = known_survivors()
    counts = {"killed": 0, "survived": 0, "no fault": 0, "same object": 0, "harmless": 0}
    survivors = []
    lock = threading.Lock()
    log = open(BUILD / "log.txt", "w")

    def work(number):
        worker = Worker(tests, number)
        while True:
            with lock:
                if sum(counts[key] for key in ("killed", "survived", "harmless")) >= words.count:
                    return
                source, fault = next(queue, (None, None))
            if source is None:
                return
            outcome = worker.try_fault(source, fault)
            line, before, after, _ = fault
            if outcome == "survived" and (source, before, after) in known:
                outcome = "harmless"
            with lock:
                counts[outcome] += 1
                print(f"{outcome:12} {source}:{line}: {before}  =>  {after}", file=log, flush=True)
                if outcome == "survived":
                    survivors.append(f"{source}\n- {before}\n+ {after}\nline {line}\n")
                    print(f"survived {source}:{line}\n    - {before}\n    + {after}", flush=True)

    workers = min(2, os.cpu_count())
    with concurrent.futures.ThreadPoolExecutor(workers) as pool:
        for done in [pool.submit(work, number) for number in range(workers)]:
            done.result()
    (BUILD / "survivors.txt").write_text("\n".join(survivors))
    deciding = counts["killed"] + counts["survived"]
    share = 100 * counts["killed"] / deciding if deciding else 100
    print(f"{counts['killed']} killed, {counts['survived']} survived, {counts['harmless']} known to change no "
          f"behaviour; {counts['same object']} left the object as it was, {counts['no fault']} did not compile")
    print(f"{share:.1f} % of those that change behaviour were noticed; {BUILD / 'survivors.txt'}")
    return share < 95


sys.exit(main())
