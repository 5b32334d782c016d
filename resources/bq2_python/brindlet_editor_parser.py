# Analysis of Python source for the editor, run in Maya's interpreter.
import ast
import keyword
import re


class BrindletEditorParser(ast.NodeVisitor):
    VERSION = "2.0.2"
    KEYWORDS = list(keyword.kwlist) + [w for w in ("True", "False", "None") if w not in keyword.kwlist]
    BUILTINS = dir(__builtins__)
    initialized = False

    def __init__(self):
        if not BrindletEditorParser.initialized:
            BrindletEditorParser.initialize()
        self.results = []

    @classmethod
    def initialize(cls):
        # Imported here so that completion finds them in sys.modules.
        import maya.cmds
        import maya.mel
        import maya.OpenMaya
        import maya.OpenMayaAnim
        try:
            import maya.OpenMayaCloth
        except Exception:
            pass
        import maya.OpenMayaFX
        import maya.OpenMayaMPx
        import maya.OpenMayaRender
        import maya.OpenMayaUI
        cls.initialized = True

    def parse_source(self, source, obj=None, keywords=False, builtins=False, native_maya_parsing=False):
        # Top-level names only; member completion comes with the full analysis.
        try:
            self.results = []
            if obj is None:
                tree = ast.parse(source)
                for node in tree.body:
                    self.results.extend(self._top_level_names(node))
                if keywords:
                    self.results.extend(self.KEYWORDS)
                if builtins:
                    self.results.extend(self.BUILTINS)
            return sorted(set(self.results))
        except Exception:
            return []

    @staticmethod
    def _top_level_names(node):
        if isinstance(node, (ast.FunctionDef, ast.ClassDef)):
            return [node.name]
        if isinstance(node, ast.Assign):
            return [t.id for t in node.targets if isinstance(t, ast.Name)]
        if isinstance(node, (ast.Import, ast.ImportFrom)):
            return [(a.asname or a.name).split(".")[0] for a in node.names]
        return []

    @staticmethod
    def syntax_check(source):
        try:
            compile(source, "<string>", "exec")
        except SyntaxError as error:
            message = re.split(r" \(", str(error), maxsplit=1)[0]
            return [message, str(error.lineno)]
        except Exception:
            return []
        return []

    @staticmethod
    def exec_statement(source):
        try:
            exec(source, globals())
        except Exception:
            return 0
        return 1
