"""Writes TernCoreKit/guidance/detail/LetterFolds.hpp: what each letter becomes when names are compared.

A letter is decomposed, loses its accents, is put into its small form, and so on until nothing changes. Marks
that make another letter of the one before (the voicing of kana, vowel signs of India) stay; where Unicode has
one code point for both, they become that one. Syllables of Hangul are taken apart by arithmetic and are not
in the table.
"""

import pathlib
import re
import sys

DATA = pathlib.Path("/usr/share/unicode")

# What readers leave out when they type: accents of Latin, Greek and Cyrillic, the points of Hebrew and
# Arabic, and what is not seen at all. Of the ranges only marks and formats count.
ACCENTS = [(0x300, 0x36F), (0x591, 0x5C7), (0x610, 0x61A), (0x64B, 0x65F), (0x670, 0x670), (0x6D6, 0x6ED),
           (0x1AB0, 0x1AFF), (0x1DC0, 0x1DFF), (0x20D0, 0x20FF), (0xFE00, 0xFE0F), (0xFE20, 0xFE2F)]
DROPPED = {0x640}  # what stretches an Arabic word

# Letters that keyboards of other languages lack, and that Unicode calls letters of their own; signs that
# come in shapes which nobody tells apart.
ALIKE = {"ø": "o", "đ": "d", "ð": "d", "ł": "l", "ħ": "h", "ŧ": "t", "ı": "i", "æ": "ae", "œ": "oe",
         "þ": "th", "‘": "'", "’": "'", "‛": "'", "ʼ": "'", "`": "'", "´": "'", "“": '"', "”": '"', "„": '"',
         "‐": "-", "–": "-", "—": "-", "−": "-"}

# Forms that no name is written in: ligatures of printed Arabic, radicals of dictionaries, notes, doubles of
# ideographs beyond the first plane.
LEFT_OUT = [(0xAC00, 0xD7A3), (0xD800, 0xF8FF), (0xFB50, 0xFDFF), (0x2F00, 0x2FDF), (0x2F800, 0x2FA1F),
            (0x1D100, 0x1D1FF), (0xE0000, 0x10FFFF)]


def within(code, ranges):
    return any(first <= code <= last for first, last in ranges)


def read_letters():
    """Category and decomposition of each code point; whether the latter is canonical."""
    categories, parts, canonical = {}, {}, set()
    for line in (DATA / "UnicodeData.txt").read_text().splitlines():
        fields = line.split(";")
        code = int(fields[0], 16)
        categories[code] = fields[2]
        if fields[5]:
            parts[code] = [int(part, 16) for part in fields[5].split() if part[0] != "<"]
            if fields[5][0] != "<":
                canonical.add(code)
    return categories, parts, canonical


def read_small_forms():
    small = {}
    for line in (DATA / "CaseFolding.txt").read_text().splitlines():
        fields = line.split("; ")
        if len(fields) > 2 and fields[1] in "CF":
            small[int(fields[0], 16)] = [int(part, 16) for part in fields[2].split()]
    return small


def read_exclusions():
    lines = (DATA / "CompositionExclusions.txt").read_text().splitlines()
    return {int(line.split()[0], 16) for line in lines if re.match("[0-9A-F]", line)}


CATEGORIES, PARTS, CANONICAL = read_letters()
SMALL = read_small_forms()


def hangul_parts(code):
    index = code - 0xAC00
    tail = [0x11A7 + index % 28] if index % 28 else []
    return [0x1100 + index // 588, 0x1161 + index % 588 // 28, *tail]


def is_dropped(code):
    category = CATEGORIES.get(code, "Cn")
    return code in DROPPED or category == "Cf" or category in ("Mn", "Me") and within(code, ACCENTS)


def step(code):
    """What becomes of the letter next; itself in a list when it stays."""
    if 0xAC00 <= code <= 0xD7A3:
        return hangul_parts(code)
    if is_dropped(code):
        return []
    if chr(code) in ALIKE:
        return [ord(letter) for letter in ALIKE[chr(code)]]
    if code in PARTS:
        return PARTS[code]
    if CATEGORIES.get(code) == "Zs" or code < 0x20 or 0x7F <= code < 0xA0:
        return [0x20]
    return SMALL.get(code, [code])


def folded(code):
    letters, before = [code], None
    while letters != before:
        before = letters
        letters = [after for letter in letters for after in step(letter)]
    return letters


def pairs():
    """Letter and mark that have a code point together, for the marks that stay."""
    excluded = read_exclusions()
    found = {}
    for code in sorted(CANONICAL - excluded):
        two = PARTS[code]
        if len(two) == 2 and CATEGORIES[two[1]] in ("Mn", "Mc") and not any(map(is_dropped, two)):
            found[tuple(two)] = code
    return found


PAIRS = pairs()


def composed(letters):
    result = []
    for letter in letters:
        whole = PAIRS.get((result[-1], letter)) if result else None
        if whole:
            result[-1] = whole
        else:
            result.append(letter)
    return result


def all_folds():
    folds = {}
    for code in sorted(CATEGORIES):
        if not within(code, LEFT_OUT):
            letters = composed(folded(code))
            if letters != [code]:
                folds[code] = letters
    return folds


def run_from(folds, code, stride, towards):
    """How many letters from this one on are one run, with nothing else between them."""
    to, count = folds[code][0], 1
    while folds.get(code + count * stride) == [to + count * towards]:
        if stride == 2 and code + count * stride - 1 in folds:
            break
        count += 1
    return min(count, 1023)


def runs_of(folds):
    """(first, count, stride, to, towards, size): neighbours that become neighbours, or all the same."""
    runs, last = [], -1
    for code, letters in folds.items():
        if len(letters) == 1 and code > last:
            count, stride, towards = max((run_from(folds, code, stride, towards), -stride, towards)
                                         for stride in (1, 2) for towards in (0, stride))
            runs.append((code, count, -stride, letters[0], towards, 1))
            last = code - stride * (count - 1)
    return runs


def deletions_of(folds):
    runs = []
    for code in (code for code, letters in folds.items() if not letters):
        if runs and runs[-1][0] + runs[-1][1] == code:
            runs[-1] = (runs[-1][0], runs[-1][1] + 1, 1, 0, 0, 0)
        else:
            runs.append((code, 1, 1, 0, 0, 0))
    return runs


def texts_of(folds):
    pool, runs = "", []
    for code, letters in folds.items():
        if len(letters) > 1:
            text = "".join(map(chr, letters))
            if text not in pool:
                pool += text
            runs.append((code, 1, 1, pool.index(text), 0, len(letters)))
    return pool, runs


HEADER = """\
// What letters become when names are compared, after Unicode {version}; written by
// scripts/checks/letter-folds. {bytes} bytes.
//
// Ownership: constants. Threads: any. Fails: never.
#pragma once

namespace tern::inline v5::detail {{

// A run of letters, each `stride` behind the one before. With a `size` of 1 the first becomes `to`,
// and the target goes `towards` with each; of another size all become that many letters of
// `foldedTexts` from the place `to` on, or nothing.
struct LetterFold {{
  char32_t first : 21;
  char32_t count : 11;
  char32_t to : 21;
  char32_t size : 5;
  char32_t stride : 3;
  char32_t towards : 3;
}};

// A letter and a mark that have a code point together.
struct MarkedLetter {{
  char32_t letter;
  char32_t mark;
  char32_t together;
}};

// In ascending order; no run begins before the one before it ends.
// clang-format off
inline constexpr LetterFold letterFolds[] = {{
{folds}
}};

inline constexpr char16_t foldedTexts[] = {{
{texts}
}};

// In ascending order.
inline constexpr MarkedLetter markedLetters[] = {{
{pairs}
}};
// clang-format on

}}  // namespace tern::detail
"""


def lines_of(entries, many):
    rows = [", ".join(entries[i:i + many]) for i in range(0, len(entries), many)]
    return "\n".join("    " + row + "," for row in rows)


def main():
    folds = all_folds()
    pool, texts = texts_of(folds)
    runs = sorted(runs_of(folds) + deletions_of(folds) + texts)
    assert all(run[5] < 32 for run in runs) and all(ord(letter) < 0x10000 for letter in pool)
    first_line = (DATA / "CaseFolding.txt").read_text().splitlines()[0]
    sys.stdout.write(HEADER.format(
        version=re.search(r"-(\d+\.\d+)", first_line)[1],
        bytes=8 * len(runs) + 2 * len(pool) + 12 * len(PAIRS),
        folds=lines_of(["{0x%x, %d, %s, %d, %d, %d}" % (first, count, hex(to) if size == 1 else to, size, stride, towards)
                        for first, count, stride, to, towards, size in runs], 4),
        texts=lines_of(["0x%x" % ord(letter) for letter in pool], 14),
        pairs=lines_of(["{0x%x, 0x%x, 0x%x}" % (*two, one) for two, one in sorted(PAIRS.items())], 4)))


main()
