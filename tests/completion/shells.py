"""Completes words in bash, zsh and fish: shells.py FOLDER, which holds the scripts."""
import os
import pty
import re
import select
import subprocess
import sys
import time

out = sys.argv[1]
shells = ("bash", "zsh", "fish")
failures = 0


def options_of(command):
    """The long options that the help lists."""
    text = subprocess.run(["tern", *command, "--help"], capture_output=True, text=True, check=True)
    return set(re.findall(r"^  (?:-h, )?(--[a-z-]+)", text.stdout, re.MULTILINE))


def commands():
    text = subprocess.run(["tern", "--help"], capture_output=True, text=True, check=True).stdout
    listed = text[text.index("Commands:") : text.index("\nEach command")]
    return re.findall(r"^  ([a-z]+) ", listed, re.MULTILINE)


class Interactive:
    """A shell in a terminal, where `tern` prints its words as a line "@word@word@."."""

    def __init__(self, words, setup, complete_all):
        self.complete_all = complete_all
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(out)
            os.environ.update(TERM="xterm", PS1="", COLUMNS="200", HISTFILE="/dev/null")
            os.execvp(words[0], words)
        for line in setup + ["tern() { printf '@%s' \"$@\"; printf '@.\\n'; }", "stty -echo", "tern"]:
            os.write(self.terminal, line.encode() + b"\n")
        self.answer()

    def answer(self):
        """The words of the next line that `tern` prints."""
        read = b""
        end = time.monotonic() + 20
        while time.monotonic() < end:
            if select.select([self.terminal], [], [], 0.2)[0]:
                read += os.read(self.terminal, 4096)
            found = re.search(rb"\n(@[^\n]*)@\.\r?\n", read)
            if found:
                return found[1].decode().split("@")[1:]
        raise SystemExit(f"the shell does not answer: {read!r}")

    def complete(self, line, key=None):
        os.write(self.terminal, line.encode() + (self.complete_all if key is None else key))
        time.sleep(0.3)
        os.write(self.terminal, b"\n")
        return self.answer()


class Bash(Interactive):
    def __init__(self):
        # Escape and "*" put in all that Tab would offer.
        super().__init__(["bash", "--norc", "--noprofile", "-i"], ["source tern.bash"], b"\x1b*")


class Zsh(Interactive):
    def __init__(self):
        setup = [
            "fpath=($PWD/zsh $fpath)",
            "autoload -Uz compinit; compinit -u -d $PWD/zsh/dump",
            "zle -C all-matches complete-word _generic",
            "zstyle ':completion:all-matches::::' completer _all_matches _complete",
            "zstyle ':completion:all-matches:*' insert true",
            "zstyle ':completion:*' menu no; setopt no_auto_menu no_list_ambiguous; unsetopt beep prompt_sp",
            "bindkey '^Xa' all-matches; PROMPT=",
        ]
        super().__init__(["zsh", "-f", "-i"], setup, b"\x18a")


class Fish:
    def complete(self, line):
        asked = f"source tern.fish; complete -C '{line}'"
        told = subprocess.run(
            ["fish", "--no-config", "-c", asked], cwd=out, capture_output=True, text=True, check=True
        )
        assert not told.stderr, told.stderr
        words = line.split(" ")[1:-1]
        return words + [offer.split("\t")[0] for offer in told.stdout.splitlines()]


def expect(name, shell, line, expected):
    """What the last word of the line may become is just that."""
    global failures
    words = line.split(" ")[1:-1]
    told = shell.complete(line)
    offered = {offer.rstrip("/ ") for offer in told[len(words) :] if offer}
    if told[: len(words)] != words or offered != set(expected):
        failures += 1
        print(f"{name}: {line!r} becomes {sorted(offered)} and not {sorted(expected)}")


def check(name, shell):
    every = commands()
    assert "route" in every and len(every) > 15
    expect(name, shell, "tern ", every)
    expect(name, shell, "tern ro", ["route"])
    expect(name, shell, "tern --data folder ro", ["route"])
    expect(name, shell, "tern --json ro", ["route"])
    for command in every:
        expect(name, shell, f"tern {command} --", options_of([command]))
    expect(name, shell, "tern --da", ["--data"])
    expect(name, shell, "tern route --data folder --acc", ["--accessibility"])
    expect(name, shell, "tern route --language e", ["en", "en-US", "es"])
    expect(name, shell, "tern convert --to ", ["EPSG:4326", "EPSG:3857", "tern:local"])
    expect(name, shell, "tern completion ", ["bash", "zsh", "fish"])
    expect(name, shell, "tern info --data fo", ["folder"])
    expect(name, shell, "tern info --data folder/", ["folder/inner"])
    expect(name, shell, "tern route --picture folder/", ["folder/file.txt", "folder/inner"])
    expect(name, shell, "tern --data folder route --picture folder/f", ["folder/file.txt"])


check("bash", bash := Bash())
check("zsh", zsh := Zsh())
check("fish", Fish())

# One way to go on is taken, also behind what bash takes words apart at.
for name, shell in (("bash", bash), ("zsh", zsh)):
    for line, expected in (
        ("tern rou\t --fr\t", ["route", "--from"]),
        ("tern convert --to EPSG:4\t", ["convert", "--to", "EPSG:4326"]),
        ("tern convert --to=EPSG:4\t", ["convert", "--to=EPSG:4326"]),
        ("tern convert --to=te\t", ["convert", "--to=tern:local"]),
        ("tern --host http://h:1 rou\t", ["--host", "http://h:1", "route"]),
        ("tern --data=folder rou\t", ["--data=folder", "route"]),
        ("tern route --from \t", ["route", "--from"]),
        ("tern route --data folder --acc\t", ["route", "--data", "folder", "--accessibility"]),
    ):
        told = [word for word in shell.complete(line, b"") if word]
        if told != expected:
            failures += 1
            print(f"{name}: {line!r} becomes {told} and not {expected}")

sys.exit(1 if failures else 0)
