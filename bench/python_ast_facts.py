#!/usr/bin/env python3
"""Prints, for each Python file named on stdin (one a line), what Python's own ast and tokenize
find: classes, functions and imports with their line, the indentation level of that line, and the
names the outline would show. One JSON object per file, one a line."""
import ast
import io
import json
import sys
import tokenize


def indent_levels(source):
    levels = {}
    depth = 0
    try:
        for token in tokenize.generate_tokens(io.StringIO(source).readline):
            if token.type == tokenize.INDENT:
                depth += 1
            elif token.type == tokenize.DEDENT:
                depth -= 1
            else:
                levels.setdefault(token.start[0], depth)
    except (tokenize.TokenError, IndentationError, SyntaxError):
        pass
    return levels


def decorator_names(node):
    names = []
    for decorator in node.decorator_list:
        names.append(decorator.id if isinstance(decorator, ast.Name) else "")
    return names


def method_type(node):
    names = decorator_names(node)
    s = names.index("staticmethod") if "staticmethod" in names else -1
    k = names.index("classmethod") if "classmethod" in names else -1
    if s >= 0 and k >= 0:
        return 9 if k < s else 10
    if s >= 0:
        return 9
    if k >= 0:
        return 10
    return 8


def facts(source):
    tree = ast.parse(source)
    levels = indent_levels(source)
    result = []

    def add(kind, name, node, extra=None):
        item = {"kind": kind, "name": name, "line": node.lineno, "level": levels.get(node.lineno, -1)}
        if extra:
            item.update(extra)
        result.append(item)

    for node in ast.walk(tree):
        if isinstance(node, ast.ClassDef):
            add(11, node.name, node)
        elif isinstance(node, ast.FunctionDef):
            add(method_type(node), node.name, node)
        elif isinstance(node, ast.AsyncFunctionDef):
            add(method_type(node), node.name, node, {"async": True})
        elif isinstance(node, ast.Import):
            for alias in node.names:
                if alias.asname:
                    add(5, "%s = %s" % (alias.asname, alias.name), node)
                else:
                    add(4, alias.name, node)
        elif isinstance(node, ast.ImportFrom):
            module = "." * node.level + (node.module or "")
            for alias in node.names:
                name = "%s = %s" % (alias.asname, alias.name) if alias.asname else alias.name
                add(6, "%s (%s)" % (name, module), node)
    return result


def main():
    for path in sys.stdin.read().split("\n"):
        if not path:
            continue
        record = {"file": path, "ok": False, "items": []}
        try:
            with open(path, "rb") as handle:
                data = handle.read()
            source = data.decode("utf-8")
            record["items"] = facts(source)
            record["ok"] = True
        except (SyntaxError, ValueError, UnicodeDecodeError, OSError) as error:
            record["error"] = str(error)
        print(json.dumps(record))


if __name__ == "__main__":
    main()
