"""Maya's Python API 2.0 package.

Importable but essentially empty: the substitute host only provides the module names.
"""
