"""Maya's OpenMaya API module.

Importable but essentially empty: the substitute host has no scene, nodes or API classes, so
nothing is defined here.
"""
