#!/usr/bin/env python3
"""The completion script parses a buffer part by part and keeps the parts of the last request.

Checks over the whole standard library that the tree it builds equals ast.parse's (first from
nothing, then from its own cache), and times a request after an edit inside a method of a large
class against ast.parse of the same text, in this interpreter.

Run: python3 bench/completion_parts_against_ast.py
"""
import ast
import glob
import os
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "resources", "bq2_python"))
import brindlet_editor_parser as script  # noqa: E402


def reset():
    script._parsed_parts = {}
    script._unparsed_parts = set()


def best_ms(run, count=5):
    best = float("inf")
    for _ in range(count):
        start = time.perf_counter()
        run()
        best = min(best, time.perf_counter() - start)
    return best * 1000


def main():
    same = whole = files = 0
    for path in sorted(glob.glob("/usr/lib/python3.11/*.py")):
        with open(path, encoding="utf-8", errors="replace") as file:
            source = file.read()
        try:
            expected = ast.dump(ast.parse(source))
        except (SyntaxError, ValueError):
            continue
        files += 1
        reset()
        first = ast.dump(script._parse_module(source, path))
        whole += bool(script._unparsed_parts)
        again = ast.dump(script._parse_module(source, path))
        if first == expected and again == expected:
            same += 1
        else:
            print("differs:", path)
    print("trees equal to ast.parse: %d of %d files (%d parsed whole: a cut fell inside a literal)"
          % (same, files, whole))

    with open("/usr/lib/python3.11/_pydecimal.py", encoding="utf-8") as file:
        lines = file.read().split("\n")
    method = next(i for i, line in enumerate(lines) if line.startswith("    def to_eng_string"))
    start = max(i for i in range(method) if lines[i].startswith("class "))
    end = next(i for i in range(method, len(lines)) if lines[i][:1].isalpha())
    edits = ["\n".join(lines[:method + 2] + ["        self.x%d = None" % n] + lines[method + 2:])
             for n in range(5)]
    reset()
    script._parse_module(edits[0], "x")
    counter = iter(range(1, 10**6))
    edited = best_ms(lambda: script._parse_module(edits[next(counter) % 5], "x"))
    peer = best_ms(lambda: ast.parse(edits[0]))
    print("%d lines, an edit in a method of a %d-line class: %.1f ms; ast.parse %.1f ms (ratio %.2f)"
          % (len(lines), end - start, edited, peer, edited / peer))


if __name__ == "__main__":
    main()
