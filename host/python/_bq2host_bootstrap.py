"""Start-up of the substitute host's Python: standard streams, the embedded ``maya`` package and
the form in which errors are reported. Run once by the host right after the interpreter starts.
"""

import importlib.abc
import importlib.machinery
import io
import sys
import traceback

import _bq2host

# Message types of the host's command output, as Maya numbers them.
DISPLAY = 1
ERROR = 4


class HostStream(io.TextIOBase):
    """sys.stdout or sys.stderr: text goes to the host's command output."""

    encoding = "utf-8"
    errors = "strict"

    def __init__(self, name, message_type):
        super().__init__()
        self._name = name
        self._message_type = message_type

    @property
    def name(self):
        return self._name

    def writable(self):
        return True

    def isatty(self):
        return False

    def write(self, text):
        if not isinstance(text, str):
            raise TypeError("write() argument must be str, not " + type(text).__name__)
        _bq2host.write(text, self._message_type)
        return len(text)

    def flush(self):
        _bq2host.flush()


class NoInput(io.TextIOBase):
    """sys.stdin: there is no terminal to read from, so reading gives end of file at once
    instead of blocking the host's event loop."""

    encoding = "utf-8"
    errors = "strict"

    @property
    def name(self):
        return "<stdin>"

    def readable(self):
        return True

    def isatty(self):
        return False

    def read(self, size=-1):
        return ""

    def readline(self, size=-1):
        return ""


class EmbeddedLoader(importlib.abc.InspectLoader):
    """Loads a module whose source is compiled into the host."""

    def __init__(self, source, is_package, file_name):
        self._source = source
        self._is_package = is_package
        self._file_name = file_name

    def create_module(self, spec):
        return None

    def exec_module(self, module):
        exec(self.get_code(module.__name__), module.__dict__)

    def get_source(self, fullname):
        return self._source

    def get_code(self, fullname):
        return compile(self._source, self._file_name, "exec", dont_inherit=True)

    def is_package(self, fullname):
        return self._is_package


class EmbeddedFinder(importlib.abc.MetaPathFinder):
    """Finds the modules compiled into the host (the ``maya`` package) without any file."""

    def find_spec(self, fullname, path=None, target=None):
        entry = _bq2host.embedded_source(fullname)
        if entry is None:
            return None
        source, is_package, file_name = entry
        loader = EmbeddedLoader(source, is_package, file_name)
        spec = importlib.machinery.ModuleSpec(fullname, loader, origin=file_name, is_package=is_package)
        # A __file__ lets inspect and tracebacks find the source, through the loader.
        spec.has_location = True
        return spec


def _innermost_console_line(exc):
    line = None
    frame = exc.__traceback__
    while frame is not None:
        if frame.tb_frame.f_code.co_filename == _bq2host.CONSOLE_NAME:
            line = frame.tb_lineno
        frame = frame.tb_next
    return line


def _text_of(exc):
    try:
        return str(exc)
    except Exception:
        return "<unprintable %s object>" % type(exc).__name__


def describe_exception(exc):
    """The traceback of an uncaught exception and the one line of error that Maya shows for it:
    "<type>: file <maya console> line <n>: <message>", with the line in the code that was run."""
    stack = "".join(traceback.format_exception(type(exc), exc, exc.__traceback__))
    if isinstance(exc, SyntaxError) and exc.filename == _bq2host.CONSOLE_NAME:
        line = exc.lineno
        message = exc.msg
    else:
        line = _innermost_console_line(exc)
        message = _text_of(exc)
    name = type(exc).__name__
    if line is None:
        return stack, "%s: %s" % (name, message)
    return stack, "%s: file %s line %d: %s" % (name, _bq2host.CONSOLE_NAME, line, message)


def install():
    sys.stdout = HostStream("<stdout>", DISPLAY)
    sys.stderr = HostStream("<stderr>", ERROR)
    sys.stdin = NoInput()
    # Ahead of the path finder, so that no "maya" folder on sys.path can shadow the host's own.
    path_finder = importlib.machinery.PathFinder
    position = sys.meta_path.index(path_finder) if path_finder in sys.meta_path else 0
    sys.meta_path.insert(position, EmbeddedFinder())
