"""MEL from Python: ``eval`` runs MEL text in the host and returns its result."""

import _bq2host

__all__ = ["eval"]


def eval(text):
    """Runs MEL text, as Maya's Script Editor would without echo.

    Returns the result of the last statement: an int, a float, a str or a list of str, or None
    when the MEL has no result. Raises RuntimeError when the MEL fails; the MEL error itself has
    been printed by then.
    """
    if not isinstance(text, str):
        raise TypeError("eval() argument must be str, not " + type(text).__name__)
    ok, value, _error = _bq2host.mel_eval(text)
    if not ok:
        raise RuntimeError("Error occurred during execution of MEL script")
    return value
