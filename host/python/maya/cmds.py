"""Maya's command module, for the substitute host.

Each MEL command of the host is a function of this module. Calling it builds MEL text from the
arguments, runs it through the host's MEL layer and converts the result back:

- keyword arguments become flags under the short or long name used, in the order given:
  ``about(version=True)`` runs ``about -version``;
- ``q``/``query`` and ``e``/``edit`` set to True put the command in query or edit mode;
- a flag that takes no value is written when its value is true and left out when it is false;
  a flag that takes a value gets True and False as 1 and 0, except in query mode, where a
  boolean only names the flag to query;
- a list repeats the flag once per element (a multi-use flag) and a tuple gives one flag all
  its values; for a flag that takes several values a list is one set of values too, and a list
  of tuples several sets;
- positional arguments become the command's objects, after the flags; a list or tuple gives
  one object per element;
- strings are quoted with MEL's escapes, numbers are written as they are, None leaves the flag
  out.

Which flags take values is read from the command's synopsis (``help -so``); a flag that the
synopsis does not list is treated as taking a value unless its value is a boolean.

The result is an int, a float, a str, a list of str, or None when the command gives none. A
failed command raises RuntimeError with the command's error message.
"""

import re

import _bq2host

_QUERY_FLAGS = ("q", "query")
_EDIT_FLAGS = ("e", "edit")
_MEL_LINE_PREFIX = re.compile(r"^line \d+: ")


def _quote(text):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n").replace("\t", "\\t")
    return '"' + escaped + '"'


def _format_value(value):
    if isinstance(value, bool):
        return "1" if value else "0"
    if isinstance(value, int):
        return str(value)
    if isinstance(value, float):
        return repr(value)
    return _quote(str(value))


def _format_values(value):
    if isinstance(value, (list, tuple)):
        return [_format_value(item) for item in value]
    return [_format_value(value)]


def _flag_value_counts(command):
    """How many values each flag of the command takes, by short and long name."""
    ok, synopsis, _error = _bq2host.mel_eval("help -so " + command)
    if not ok or synopsis is None:
        return {}
    if isinstance(synopsis, list):
        synopsis = "\n".join(synopsis)
    counts = {}
    in_flags = False
    for line in str(synopsis).splitlines():
        words = line.split()
        if not in_flags:
            in_flags = bool(words) and words[0].startswith("Flags:")
            continue
        names = [word[1:] for word in words[:2] if word.startswith("-")]
        if not names:
            continue
        types = []
        for word in words[len(names):]:
            if word.startswith("("):
                break
            types.append(word)
        for name in names:
            counts[name] = len(types)
    return counts


def _flag_words(name, value, count, query):
    flag = "-" + name
    if value is None:
        return []
    if isinstance(value, bool) and (query or not count):
        return [flag] if value else []
    if count == 0:
        return [flag] if value else []
    if isinstance(value, tuple):
        return [flag] + _format_values(value)
    if isinstance(value, list):
        if count is not None and count > 1 and not any(isinstance(item, (list, tuple)) for item in value):
            return [flag] + _format_values(value)
        words = []
        for item in value:
            words += [flag] + _format_values(item)
        return words
    return [flag, _format_value(value)]


def _build(command, args, kwargs):
    """The MEL text of one call."""
    counts = _flag_value_counts(command) if kwargs else {}
    query = any(kwargs.get(name) is True for name in _QUERY_FLAGS)
    mode_words = []
    flag_words = []
    for name, value in kwargs.items():
        if name in _QUERY_FLAGS + _EDIT_FLAGS and isinstance(value, bool):
            if value:
                mode_words.append("-" + name)
            continue
        flag_words += _flag_words(name, value, counts.get(name), query)
    object_words = []
    for arg in args:
        object_words += _format_values(arg)
    return " ".join([command] + mode_words + flag_words + object_words)


def _run(command, args, kwargs):
    ok, value, error = _bq2host.mel_eval(_build(command, args, kwargs))
    if not ok:
        message = _MEL_LINE_PREFIX.sub("", error) if error else command + ": command failed"
        raise RuntimeError(message)
    return value


def _command(name):
    def command(*args, **kwargs):
        return _run(name, args, kwargs)

    command.__name__ = name
    command.__qualname__ = name
    command.__doc__ = "Runs the MEL command '%s'; arguments map to flags as this module describes." % name
    return command


def __getattr__(name):
    # Commands come and go with plug-ins, so they are looked up at each access.
    if not name.startswith("_") and _bq2host.command_exists(name):
        return _command(name)
    raise AttributeError("module 'maya.cmds' has no attribute '%s'" % name)


def __dir__():
    module_names = [name for name in globals() if name.startswith("__")]
    return sorted(set(module_names) | set(_bq2host.command_names()))
