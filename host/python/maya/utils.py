"""Helpers that Maya offers for running Python code later or on the main thread.

Everything of the host runs on the main thread: executeInMainThreadWithResult lets code of
another thread wait for work done there.
"""

import sys

import _bq2host

__all__ = ["executeDeferred", "executeInMainThreadWithResult"]


def _main_namespace():
    return vars(sys.modules["__main__"])


def _as_callable(function_or_code, args, kwargs):
    if isinstance(function_or_code, str):
        if args or kwargs:
            raise TypeError("arguments can only be passed with a callable, not with code")
        source = function_or_code

        def run_code():
            # Compiled when it runs, so that a syntax error is reported then, as Maya does.
            exec(compile(source, _bq2host.CONSOLE_NAME, "exec"), _main_namespace())

        return run_code
    if not callable(function_or_code):
        raise TypeError("expected a callable or a string of Python code")
    if not args and not kwargs:
        return function_or_code
    return lambda: function_or_code(*args, **kwargs)


def executeDeferred(function_or_code, *args, **kwargs):
    """Runs a callable (with the given arguments) or a string of code when the host is next idle.

    Code given as a string runs in the ``__main__`` namespace. Errors are reported as Maya
    reports them, when the deferred call runs.
    """
    _bq2host.defer(_as_callable(function_or_code, args, kwargs))


def executeInMainThreadWithResult(function_or_code, *args, **kwargs):
    """Runs a callable or code on the main thread, waits for it and returns its result.

    On the main thread it runs at once. Code given as a string is evaluated in ``__main__`` if it
    is an expression, else executed (the result is then None). An exception reaches the caller.
    """
    if isinstance(function_or_code, str):
        if args or kwargs:
            raise TypeError("arguments can only be passed with a callable, not with code")
        source = function_or_code

        def run_code():
            try:
                code = compile(source, _bq2host.CONSOLE_NAME, "eval")
            except SyntaxError:
                exec(compile(source, _bq2host.CONSOLE_NAME, "exec"), _main_namespace())
                return None
            return eval(code, _main_namespace())

        return _bq2host.call_in_main_thread(run_code)
    return _bq2host.call_in_main_thread(_as_callable(function_or_code, args, kwargs))
