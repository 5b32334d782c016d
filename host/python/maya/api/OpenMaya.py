"""Maya's Python API 2.0 OpenMaya module.

Importable but essentially empty: the substitute host has no scene, nodes or API classes, so
nothing is defined here.
"""
