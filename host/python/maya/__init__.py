"""Maya's top-level package, as the substitute host provides it.

The modules that matter are ``maya.cmds``, ``maya.mel`` and ``maya.utils``; they reach the host
through its built-in ``_bq2host`` module. The API modules (``maya.OpenMaya`` and friends) exist
so that imports succeed, and are otherwise empty.
"""
