#!/usr/bin/env python3
"""Compares what PythonHighlighter records as strings and comments with Python's own tokenize.

Input: a JSON file written by PythonCorpusDump.h, one record per Python file:
    {"files": [{"path": ..., "lines": [[ignore ranges], [line comment ranges]], ...}]}
with ranges as [start, end] in UTF-16 columns, both ends included, one entry per text block.

Every character of every line is compared twice: whether the highlighter ignores it (string or
comment) against whether tokenize puts it in a STRING or COMMENT token, and whether the
highlighter records it as a line comment against COMMENT tokens. Each run of characters on which
the two disagree is put in a class named after the highlighting rule that explains it; a run that
no rule explains is a bug and is listed.

Prints a report; with --summary FILE also writes the figures as JSON.
"""

import argparse
import collections
import io
import json
import sys
import tokenize

PREFIX_LETTERS = set("rRbBuUfF")
QUOTES = set("'\"")

# The rule behind each class of disagreement.
EXPLANATIONS = {
    "prefix": "string start patterns are bare quote characters, so a prefix (r, b, u, f and their "
    "combinations) before the quote stays code",
    "line-split": "the file's blocks and tokenize's lines differ in number (a character that the "
    "text document takes for a line end and Python does not); the file is left out",
    "tokenize-error": "tokenize rejects the file; the file is left out",
}


def utf16_to_code_points(line):
    """Index of the code point that each UTF-16 column of the line belongs to."""
    mapping = []
    for index, char in enumerate(line):
        mapping.append(index)
        if ord(char) > 0xFFFF:
            mapping.append(index)
    mapping.append(len(line))
    return mapping


def covered(ranges, line):
    """The code point columns of the line that the highlighter's ranges hold."""
    mapping = utf16_to_code_points(line)
    units = len(mapping) - 1
    columns = set()
    for start, end in ranges:
        for unit in range(max(start, 0), min(end, units - 1) + 1):
            columns.add(mapping[unit])
    return columns


def token_columns(text):
    """Per line, the columns of STRING tokens and of COMMENT tokens."""
    lines = text.split("\n")
    strings = [set() for _ in lines]
    comments = [set() for _ in lines]
    for token in tokenize.generate_tokens(io.StringIO(text).readline):
        if token.type not in (tokenize.STRING, tokenize.COMMENT):
            continue
        target = strings if token.type == tokenize.STRING else comments
        (start_row, start_col), (end_row, end_col) = token.start, token.end
        for row in range(start_row, end_row + 1):
            line = lines[row - 1]
            first = start_col if row == start_row else 0
            last = end_col if row == end_row else len(line)
            target[row - 1].update(range(first, min(last, len(line))))
    return lines, strings, comments


def runs(columns):
    """Maximal runs of consecutive columns, as (first, last)."""
    result = []
    for column in sorted(columns):
        if result and result[-1][1] == column - 1:
            result[-1][1] = column
        else:
            result.append([column, column])
    return result


def classify(line, first, last, tokenize_only, highlighter_ignored):
    if tokenize_only:
        piece = line[first:last + 1]
        follows = line[last + 1] if last + 1 < len(line) else ""
        if piece and set(piece) <= PREFIX_LETTERS and follows in QUOTES and (last + 1) in highlighter_ignored:
            return "prefix"
    return "unexplained"


def compare_file(record, totals, classes, samples):
    path = record["path"]
    try:
        with tokenize.open(path) as handle:
            text = handle.read()
        lines, strings, comments = token_columns(text)
    except (OSError, SyntaxError, tokenize.TokenError, UnicodeDecodeError):
        classes["tokenize-error"] += 1
        return
    blocks = record["lines"]
    if len(blocks) != len(lines):
        classes["line-split"] += 1
        return
    totals["files"] += 1
    for number, (line, (ignore, single)) in enumerate(zip(lines, blocks), start=1):
        ignored = covered(ignore, line)
        commented = covered(single, line)
        token_ignored = strings[number - 1] | comments[number - 1]
        totals["characters"] += len(line)
        totals["lines"] += 1
        disagree = ignored ^ token_ignored
        comment_disagree = commented ^ comments[number - 1]
        totals["string_comment_agree"] += len(line) - len(disagree)
        totals["comment_agree"] += len(line) - len(comment_disagree)
        if not disagree and not comment_disagree:
            totals["lines_agree"] += 1
        for kind, difference, reference in (
            ("strings and comments", disagree, token_ignored),
            ("line comments", comment_disagree, comments[number - 1]),
        ):
            for first, last in runs(difference):
                tokenize_only = first in reference
                name = classify(line, first, last, tokenize_only, ignored)
                classes[name] += 1
                if kind == "strings and comments" and name != "unexplained":
                    totals["string_comment_explained"] += last - first + 1
                if name == "unexplained" and len(samples) < 50:
                    samples.append("%s:%d:%d-%d %s (%s only): %s" % (
                        path, number, first, last, kind, "tokenize" if tokenize_only else "highlighter",
                        line.strip()[:100]))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("records", help="JSON written by the highlighter side")
    parser.add_argument("--summary", help="write the figures as JSON to this file")
    arguments = parser.parse_args()
    with open(arguments.records, encoding="utf-8") as handle:
        records = json.load(handle)["files"]
    totals = collections.Counter()
    classes = collections.Counter()
    samples = []
    for record in records:
        compare_file(record, totals, classes, samples)

    characters = max(totals["characters"], 1)
    print("Files compared: %d of %d" % (totals["files"], len(records)))
    print("Lines: %d, characters: %d" % (totals["lines"], totals["characters"]))
    print("Strings and comments, characters in agreement: %.4f%%" % (100.0 * totals["string_comment_agree"] / characters))
    print("Strings and comments, characters in agreement or explained by a rule: %.4f%%" % (
        100.0 * (totals["string_comment_agree"] + totals["string_comment_explained"]) / characters))
    print("Line comments, characters in agreement: %.4f%%" % (100.0 * totals["comment_agree"] / characters))
    print("Lines in full agreement: %.4f%%" % (100.0 * totals["lines_agree"] / max(totals["lines"], 1)))
    print("Disagreements (runs of characters, or files), by class:")
    for name, count in sorted(classes.items(), key=lambda item: -item[1]):
        print("  %-15s %7d  %s" % (name, count, EXPLANATIONS.get(name, "NO RULE EXPLAINS THIS: a bug")))
    for sample in samples:
        print("  unexplained: " + sample)
    if arguments.summary:
        with open(arguments.summary, "w", encoding="utf-8") as handle:
            json.dump({"totals": totals, "classes": classes, "samples": samples}, handle)
    return 0


if __name__ == "__main__":
    sys.exit(main())
