# Analysis of Python source for the editor, run in Maya's interpreter.
#
# The completer sends the whole buffer with the statement at the cursor replaced by a locator
# (an assignment to, or a test of, __brindlet_lctr_mvkt__). Meeting the locator tells this
# module in which class and function the cursor stands; what is assigned below it does not
# exist yet. Every public operation catches everything: the editor gets an empty list, never
# an exception, and nothing is printed.
import ast
import keyword
import os
import re
import sys
import warnings

try:
    unicode
except NameError:
    unicode = str

LOCATOR = "__brindlet_lctr_mvkt__"
LOCATOR_FUNCTION = "__bqdefloc__"
LOCATOR_CLASS = "__bqclsloc__"


# The statements of the last request's top-level parts, by their text: the next request parses
# again only the parts that changed, mostly the one at the cursor.
_parsed_parts = {}
# The last part that did not parse alone: while it stands in the text, the whole text is parsed.
_unparsed_parts = set()
# A line that carries on the statement above it, though it starts in column 0.
_CARRIED_ON = ("else", "elif", "except", "finally", "@")
_NO_CUT_BEFORE = " \t\r\f#)]}"


def _open_triple_quote(line, quote):
    """The triple quote left open after the line, given the one open before it. A rough count
    (a quote inside a one-line string or a comment misleads it) that costs time when wrong."""
    if quote is None and '"""' not in line and "'''" not in line:
        return None
    index = 0
    while True:
        if quote is None:
            found = [i for i in (line.find('"""', index), line.find("'''", index)) if i >= 0]
            if not found:
                return None
            index = min(found)
            quote = line[index:index + 3]
            index += 3
        else:
            end = line.find(quote, index)
            if end < 0:
                return quote
            quote = None
            index = end + 3


def _split_lines(lines, indent=""):
    """The lines grouped into statements at the given indent: a group starts at each line that
    may start one. A cut that falls inside a string, brackets or a continued line leaves a group
    that does not parse, and the caller then parses the whole: a wrong cut costs time, never a
    different result."""
    groups = []
    current = []
    after_decorator = False
    quote = None
    width = len(indent)
    for line in lines:
        first = line[width:width + 1]
        starts_statement = (quote is None and first and first not in _NO_CUT_BEFORE
                            and line.startswith(indent))
        if (current and starts_statement and not after_decorator
                and not line.startswith(_CARRIED_ON, width)):
            groups.append(current)
            current = []
        current.append(line)
        if starts_statement:
            after_decorator = first == "@"
        quote = _open_triple_quote(line, quote)
    groups.append(current)
    return groups


def _top_level_parts(source):
    groups = _split_lines(source.split("\n"))
    return ["\n".join(group) + "\n" for group in groups[:-1]] + ["\n".join(groups[-1])]


class _PartParser(object):
    """Parses a text part by part, the parts of the last run taken from its cache; a class is
    parsed member by member, so that typing in one method parses only that method again."""

    def __init__(self, filename, cache):
        self.filename = filename
        self.cache = cache
        self.parsed = {}

    def statements(self, text):
        statements = self.parsed.get(text)
        if statements is None:
            statements = self.cache.get(text)
        if statements is None and (text.startswith("class ") or text.startswith("@")):
            statements = self._class_statements(text)
        if statements is None:
            statements = ast.parse(text, self.filename).body
        self.parsed[text] = statements
        return statements

    def _class_statements(self, part):
        lines = part.split("\n")
        header = 0
        while header < len(lines) and lines[header].startswith("@"):
            header += 1
        body = [line for line in lines[header + 1:] if line.strip() and not line.lstrip().startswith("#")]
        if header >= len(lines) or not lines[header].startswith("class ") or not body:
            return None
        indent = body[0][:len(body[0]) - len(body[0].lstrip())]
        if not indent:
            return None
        try:
            head = ast.parse("\n".join(lines[:header + 1]) + "\n" + indent + "pass\n", self.filename).body
            if len(head) != 1 or not isinstance(head[0], ast.ClassDef) or len(head[0].body) != 1:
                return None
            members = []
            for group in _split_lines(lines[header + 1:], indent):
                # Indented as they stand, under a test that is always true: strings keep every
                # character, and the test's body is the members' statements.
                members.extend(self.statements("if 1:\n" + "\n".join(group) + "\n")[0].body)
        except (SyntaxError, ValueError, IndexError, AttributeError):
            return None
        cls = head[0]
        return [ast.ClassDef(name=cls.name, bases=cls.bases, keywords=cls.keywords, body=members,
                             decorator_list=cls.decorator_list)]


def _parse_module(source, filename):
    global _parsed_parts, _unparsed_parts
    parts = _top_level_parts(source)
    if not _unparsed_parts.isdisjoint(parts):
        return ast.parse(source, filename)
    parser = _PartParser(filename, _parsed_parts)
    body = []
    for part in parts:
        try:
            body.extend(parser.statements(part))
        except (SyntaxError, ValueError):
            # A cut in the wrong place or a real error: the whole text decides, and this part
            # is not tried alone again.
            _unparsed_parts = {part}
            return ast.parse(source, filename)
    _parsed_parts = parser.parsed
    return ast.Module(body=body, type_ignores=[])


class _Kind(object):
    """Stands in for an ast node class that this Python no longer has."""


def _ast_class(name):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        found = getattr(ast, name, None)
    return found if found is not None else type(name, (_Kind,), {})


KIND_STR = _ast_class("Str")
KIND_NUM = _ast_class("Num")
VALUE_KINDS = (KIND_STR, KIND_NUM, ast.List, ast.Dict, ast.Tuple)
NUMBER_TYPES = (int, float, complex)
UNKNOWN = [None, None]
MAX_LINKS = 32


def _constant(node):
    """The pair of a literal string or number, or None when the node is neither."""
    constant = getattr(ast, "Constant", None)
    if constant is not None and isinstance(node, constant):
        value = node.value
        if isinstance(value, (str, unicode)):
            return [value, KIND_STR]
        if isinstance(value, NUMBER_TYPES) and not isinstance(value, bool):
            return [value, KIND_NUM]
        return None
    if hasattr(node, "s") and not isinstance(node, _Kind) and node.__class__.__name__ == "Str":
        return [node.s, KIND_STR]
    if hasattr(node, "n") and node.__class__.__name__ == "Num":
        return [node.n, KIND_NUM]
    return None


def _store(variables, name, pair):
    # None carries nothing; a name seen with two kinds is unknown.
    if pair[0] == "None" and pair[1] is ast.Name:
        return
    known = variables.get(name)
    if known is not None and known[1] is not pair[1]:
        variables[name] = list(UNKNOWN)
    else:
        variables[name] = list(pair)


class BrindletEditorParser(ast.NodeVisitor):
    VERSION = "2.0.2"
    KEYWORDS = list(keyword.kwlist) + [w for w in ("True", "False", "None") if w not in keyword.kwlist]
    BUILTINS = dir(__builtins__)
    initialized = False
    _module_file_cache = {}

    class ParsedClass(object):
        def __init__(self, name):
            self.name = name
            self.classes = []
            self.functions = []
            self.variables = {}
            self.self_variables = {}
            self.cls_variables = {}
            self.parent_members = []

        def append_function(self, function):
            self.functions.append(function)

        def append_variable(self, name, pair):
            _store(self.variables, name, pair)

        def append_self_variable(self, name, pair):
            _store(self.self_variables, name, pair)

        def append_cls_variable(self, name, pair):
            _store(self.cls_variables, name, pair)

    class ParsedFunction(object):
        def __init__(self, name, arguments, decorators):
            self.name = name
            self.arguments = arguments
            self.decorators = decorators
            self.variables = {}

        def append_variable(self, name, pair):
            _store(self.variables, name, pair)

    def __init__(self):
        if not BrindletEditorParser.initialized:
            try:
                BrindletEditorParser.initialize()
            except Exception:
                pass
        self.clear()

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

    def clear(self):
        self.results = []
        self.classes = []
        self.functions = []
        self.imports = []
        self.importfroms = []
        self.variables = {}
        self.modules = {}
        self.brindlet_lctr = []
        self.class_index = -1
        self.function_index = -1

    # The completer's entry point.

    def parse_source(self, source, obj=None, keywords=False, builtins=False, native_maya_parsing=False):
        try:
            with warnings.catch_warnings():
                warnings.simplefilter("ignore")
                return self._parse_source(source, obj, keywords, builtins, native_maya_parsing, True)
        except Exception:
            return []

    def _parse_source(self, source, obj, keywords, builtins, native_maya_parsing, fallback):
        self.clear()
        if not self._parse_with_fallback(source, fallback):
            return []
        self.process_parsed_data(obj)
        if obj:
            if native_maya_parsing and not self.results:
                try:
                    self._parse_maya_fallback(obj)
                except Exception:
                    pass
        else:
            if keywords:
                self.results.extend(self.KEYWORDS)
            if builtins:
                self.results.extend(self.BUILTINS)
        return self.sorted_results()

    def _parse_with_fallback(self, source, fallback):
        try:
            self.parse(source)
            return True
        except Exception:
            pass
        if not fallback:
            return False
        # What still parses: the top-level statements that fit on one line, then the imports.
        lines = source.splitlines()
        reduced = [line for line in lines if re.match(r"^[A-Za-z_]", line.strip())
                   and not line.strip().endswith(".")]
        self.clear()
        try:
            self.parse("\n".join(reduced))
            return True
        except Exception:
            pass
        self.clear()
        imports = [line for line in lines if line.startswith("import") or line.startswith("from")]
        try:
            self.parse("\n".join(imports))
            return True
        except Exception:
            self.clear()
            return False

    def class_names(self):
        return [parsed.name for parsed in self.classes]

    def find_class(self, name):
        for parsed in self.classes:
            if parsed.name == name:
                return parsed
        return None

    def append_variable(self, name, pair):
        _store(self.variables, name, pair)

    def sorted_results(self):
        names = set()
        for name in self.results:
            if isinstance(name, (str, unicode)) and name and name not in (LOCATOR_FUNCTION, LOCATOR_CLASS):
                names.add(name)
        public = sorted((n for n in names if not n.startswith("_")), key=lambda n: n.lower())
        private = sorted((n for n in names if n.startswith("_")), key=lambda n: n.lower())
        return public + private

    # From the parse to the list of names.

    def process_parsed_data(self, obj):
        if not obj:
            self._process_source()
        elif (obj == "self" or obj.startswith("self.")) and self.brindlet_lctr:
            self._process_self(obj)
        elif (obj == "cls" or obj.startswith("cls.")) and self.brindlet_lctr:
            self._process_cls(obj)
        elif obj in self.variables:
            self._process_variable(obj, self.variables)
        else:
            self._process_path(obj)
        if "__call__" in self.results:
            # A function's attributes are no completion.
            self.results = []

    def _process_path(self, obj):
        parts = obj.split(".")
        if len(parts) == 2:
            parsed = self.find_class(parts[0])
            if parsed is not None and parts[1] in parsed.variables:
                self._process_variable(parts[1], parsed.variables)
                return
        for count in range(len(parts), 0, -1):
            if ".".join(parts[:count]) in self.modules:
                self._process_module(obj)
                return
        self._process_class(obj)

    def _current_function(self):
        class_index, function_index = self.brindlet_lctr
        if class_index < 0 or function_index < 0:
            return None, None
        parsed = self.classes[class_index]
        return parsed, parsed.functions[function_index]

    def _process_self(self, obj):
        self._process_member(obj, "self")

    def _process_cls(self, obj):
        self._process_member(obj, "cls")

    def _process_member(self, obj, owner):
        parsed, function = self._current_function()
        if parsed is None or owner not in function.arguments:
            return
        members = parsed.self_variables if owner == "self" else parsed.cls_variables
        if obj == owner:
            self.results.extend(members.keys())
            self.results.extend(parsed.variables.keys())
            self.results.extend(parsed.parent_members)
            self.results.extend(f.name for f in parsed.functions)
            return
        prefixed = dict((owner + "." + key, value) for key, value in members.items())
        if obj in prefixed:
            self._process_variable(obj, prefixed)
            return
        rest = obj.split(".", 1)[1]
        if rest in parsed.variables:
            self._process_variable(rest, parsed.variables)

    def _process_variable(self, obj, variables):
        value, kind = variables.get(obj, UNKNOWN)
        for _ in range(MAX_LINKS):
            if kind is not ast.Name or value not in variables or value == obj:
                break
            obj = value
            value, kind = variables[value]
        if kind in VALUE_KINDS:
            self.results.extend(dir(value))
        elif kind in (ast.Call, ast.Attribute) and isinstance(value, (str, unicode)):
            if value in self.class_names():
                self._process_class(value)
            else:
                parts = value.split(".")
                parts[0] = self.modules.get(parts[0], parts[0])
                self.results.extend(self.parse_module(".".join(parts)))
        if not self.results:
            name = value if kind is ast.Name and isinstance(value, (str, unicode)) else obj
            if name in self.modules:
                self._process_module(name)

    def _process_module(self, module):
        parts = module.split(".")
        for count in range(len(parts), 0, -1):
            head = ".".join(parts[:count])
            if head in self.modules:
                parts = self.modules[head].split(".") + parts[count:]
                break
        self.results.extend(self.parse_module(".".join(parts)))

    def _process_class(self, obj):
        parsed = self.find_class(obj)
        if parsed is None:
            return
        self.results.extend(parsed.parent_members)
        self.results.extend(c.name for c in parsed.classes)
        self.results.extend(f.name for f in parsed.functions)
        self.results.extend(parsed.variables.keys())

    def _process_source(self):
        self.results.extend(self.class_names())
        self.results.extend(f.name for f in self.functions)
        self.results.extend(self.imports)
        self.results.extend(self.variables.keys())
        self.results.extend(name for _module, name in self.importfroms)
        if self.brindlet_lctr and self.brindlet_lctr[1] >= 0:
            class_index, function_index = self.brindlet_lctr
            owner = self.classes[class_index].functions if class_index >= 0 else self.functions
            self.results.extend(owner[function_index].arguments)

    def _parse_maya_fallback(self, obj_name):
        # Asks the live objects of the session, only where the cursor is not inside a definition.
        if self.brindlet_lctr and (self.brindlet_lctr[0] >= 0 or self.brindlet_lctr[1] >= 0):
            return
        parts = obj_name.split(".")
        scope = globals()
        if parts[0] not in scope:
            import __main__
            scope = vars(__main__)
        current = scope[parts[0]]
        for part in parts[1:]:
            current = getattr(current, part)
        self.results.extend(dir(current))

    # Modules: live ones are asked with dir(), others are read, never run.

    def parse_module(self, module):
        try:
            with warnings.catch_warnings():
                warnings.simplefilter("ignore")
                return BrindletEditorParser()._parse_module(module)
        except Exception:
            return []

    def _parse_module(self, module):
        if module == "object":
            return sorted(dir(object))
        if module in sys.modules:
            return sorted(dir(sys.modules[module]))
        parts = module.split(".")
        for count in range(len(parts) - 1, 0, -1):
            head = ".".join(parts[:count])
            if head in sys.modules and sys.modules[head] is not None:
                current = sys.modules[head]
                for part in parts[count:]:
                    current = getattr(current, part)
                return sorted(dir(current))
        return self._parse_module_file(parts)

    def _parse_module_file(self, parts):
        path, depth = self._find_module_file(parts)
        if path is None:
            return []
        if path.endswith((".pyd", ".so")):
            current = __import__(".".join(parts[:depth]))
            for part in parts[1:]:
                current = getattr(current, part)
            return sorted(dir(current))
        # A module file is read again only when it changes: base classes from imported modules
        # would otherwise cost a parse of their files at every request.
        status = os.stat(path)
        key = (".".join(parts), path)
        stamp = (status.st_mtime, status.st_size)
        cached = BrindletEditorParser._module_file_cache.get(key)
        if cached is not None and cached[0] == stamp:
            return list(cached[1])
        if status.st_size > 8 * 1024 * 1024:
            return []
        with open(path, "rb") as handle:
            text = handle.read().decode("utf-8", "replace")
        self.parse(text.replace("\r\n", "\n") + "\n", path)
        self.process_parsed_data(parts[-1] if len(parts) > depth else None)
        result = self.sorted_results()
        if len(BrindletEditorParser._module_file_cache) > 256:
            BrindletEditorParser._module_file_cache.clear()
        BrindletEditorParser._module_file_cache[key] = (stamp, result)
        return list(result)

    @staticmethod
    def _find_module_file(parts):
        """The source or extension file of the deepest package part, and how many parts it covers."""
        import importlib.machinery
        search = None
        found = None
        depth = 0
        for index, part in enumerate(parts):
            spec = importlib.machinery.PathFinder.find_spec(part, search)
            if spec is None or not spec.origin or not os.path.isfile(spec.origin):
                break
            found, depth = spec.origin, index + 1
            search = spec.submodule_search_locations
            if not search:
                break
        return found, depth

    # The visitor: statements only, so that the walk stays cheap on big buffers.

    def parse(self, source, filename="<unknown>"):
        self.classes = []
        self.functions = []
        self.visit(_parse_module(source, filename))

    # Per node class: its visitor's name, and the fields that hold statements.
    _visitors = {}
    _statement_fields = {}
    STATEMENT_FIELDS = ("body", "orelse", "finalbody", "handlers", "cases")

    def visit(self, node):
        kind = node.__class__
        name = BrindletEditorParser._visitors.get(kind)
        if name is None:
            name = "visit_" + kind.__name__
            BrindletEditorParser._visitors[kind] = name if hasattr(BrindletEditorParser, name) else ""
            name = BrindletEditorParser._visitors[kind]
        if name:
            return getattr(self, name)(node)
        self.parse_children(node)
        return None

    def parse_children(self, node):
        kind = node.__class__
        fields = BrindletEditorParser._statement_fields.get(kind)
        if fields is None:
            fields = tuple(f for f in self.STATEMENT_FIELDS if f in getattr(kind, "_fields", ()))
            BrindletEditorParser._statement_fields[kind] = fields
        for field in fields:
            children = getattr(node, field, None)
            if isinstance(children, list):
                for child in children:
                    if isinstance(child, ast.AST):
                        self.visit(child)

    def _function(self):
        if self.function_index < 0:
            return None
        if self.class_index >= 0:
            return self.classes[self.class_index].functions[self.function_index]
        return self.functions[self.function_index]

    def _set_locator(self):
        self.brindlet_lctr = [self.class_index, self.function_index]
        function = self._function()
        if function is not None:
            # Local names become known at the cursor.
            for name, pair in function.variables.items():
                self.variables[name] = list(pair)

    @staticmethod
    def _argument_names(arguments):
        names = []
        for arg in list(getattr(arguments, "posonlyargs", [])) + list(arguments.args) + \
                list(getattr(arguments, "kwonlyargs", [])):
            names.append(arg.id if hasattr(arg, "id") else arg.arg)
        for extra in (arguments.vararg, arguments.kwarg):
            if extra is not None:
                names.append(extra if isinstance(extra, (str, unicode)) else extra.arg)
        return names

    def visit_FunctionDef(self, node):
        if self.function_index >= 0:
            return
        arguments = self._argument_names(node.args)
        decorators = [d.id for d in node.decorator_list if isinstance(d, ast.Name)]
        parsed_class = self.classes[self.class_index] if self.class_index >= 0 else None
        if LOCATOR in arguments and parsed_class is not None:
            # A method name is being typed.
            self.results.extend(parsed_class.parent_members)
            self.results.extend(f.name for f in parsed_class.functions)
            self.results.extend(["self", "cls", "__init__"])
        function = BrindletEditorParser.ParsedFunction(node.name, arguments, decorators)
        if parsed_class is not None:
            parsed_class.append_function(function)
            self.function_index = len(parsed_class.functions) - 1
        else:
            if self.brindlet_lctr and self.brindlet_lctr[1] == -1:
                return
            self.functions.append(function)
            self.function_index = len(self.functions) - 1
        self.parse_children(node)
        self.function_index = -1

    visit_AsyncFunctionDef = visit_FunctionDef

    def visit_ClassDef(self, node):
        if self.function_index >= 0:
            return
        parsed = BrindletEditorParser.ParsedClass(node.name)
        for base in node.bases:
            self._inherit(parsed, base)
        if self.class_index >= 0:
            self.classes[self.class_index].classes.append(parsed)
            return
        self.classes.append(parsed)
        self.class_index = len(self.classes) - 1
        self.parse_children(node)
        self.class_index = -1

    def _inherit(self, parsed, base):
        if isinstance(base, ast.Attribute):
            name = self.expand_attribute(base)
            parts = name.split(".")
            for count in range(1, len(parts) + 1):
                head = ".".join(parts[:count])
                if head in self.modules:
                    name = ".".join([self.modules[head]] + parts[count:])
            known_module = True
        elif isinstance(base, ast.Name):
            name = base.id
            known_module = name in self.modules
            if known_module:
                name = self.modules[name]
        else:
            return
        if name == LOCATOR:
            self.results.append("object")
        elif known_module or name == "object":
            parsed.parent_members.extend(BrindletEditorParser().parse_module(name))
        else:
            parent = self.find_class(name)
            if parent is not None:
                parsed.parent_members.extend(parent.parent_members)
                parsed.classes.extend(parent.classes)
                parsed.functions.extend(parent.functions)
                parsed.variables.update(parent.variables)
                parsed.self_variables.update(parent.self_variables)

    def visit_Import(self, node):
        if self.class_index >= 0 or self.function_index >= 0:
            return
        for alias in node.names:
            if alias.asname:
                local = alias.asname
            else:
                local = alias.name
                head = alias.name.split(".")[0]
                # "import a.b" binds a.
                self.imports.append(head)
                self.modules.setdefault(head, head)
            self.imports.append(local)
            self.modules[local] = alias.name

    def visit_ImportFrom(self, node):
        if self.class_index >= 0 or self.function_index >= 0:
            return
        module = "." * (getattr(node, "level", 0) or 0) + (node.module or "")
        for alias in node.names:
            if alias.name == "*":
                continue
            local = alias.asname or alias.name
            self.importfroms.append((module, local))
            self.modules[local] = module + "." + alias.name

    def visit_Assign(self, node):
        for target in node.targets:
            self._assign_target(target, node.value)

    def visit_AnnAssign(self, node):
        if node.value is not None:
            self._assign_target(node.target, node.value)

    def _assign_target(self, target, value):
        if isinstance(target, ast.Name):
            self._handle_assign_name(target.id, value)
        elif isinstance(target, (ast.Tuple, ast.List)):
            for element in target.elts:
                if isinstance(element, ast.Name):
                    self._handle_assign_name(element.id, None)
        elif isinstance(target, ast.Attribute) and isinstance(target.value, ast.Name):
            owner = target.value.id
            function = self._function()
            if owner not in ("self", "cls") or self.class_index < 0 or function is None:
                return
            if owner not in function.arguments:
                return
            parsed = self.classes[self.class_index]
            pair = self._resolved(value)
            if owner == "self":
                parsed.append_self_variable(target.attr, pair)
            else:
                parsed.append_cls_variable(target.attr, pair)

    def _resolved(self, value):
        pair = self._update_assign_value(value) if value is not None else list(UNKNOWN)
        parsed = self.classes[self.class_index] if self.class_index >= 0 else None
        function = self._function()
        return self.resolve_variable(pair, self.variables,
                                     parsed.variables if parsed else {},
                                     function.variables if function else {},
                                     parsed.self_variables if parsed else {},
                                     parsed.cls_variables if parsed else {})

    def _handle_assign_name(self, name, value):
        if name == LOCATOR:
            self._set_locator()
            return None
        function = self._function()
        if function is not None:
            function.append_variable(name, self._resolved(value))
        elif self.class_index >= 0:
            self.classes[self.class_index].append_variable(name, list(UNKNOWN))
        elif not self.brindlet_lctr:
            # Names below the cursor do not exist yet.
            self.append_variable(name, self._resolved(value))
        return None

    def _update_assign_value(self, value):
        pair = _constant(value)
        if pair is not None:
            return pair
        if isinstance(value, (ast.List, ast.ListComp)):
            return [list, ast.List]
        if isinstance(value, ast.Dict):
            return [dict, ast.Dict]
        if isinstance(value, ast.Tuple):
            return [tuple, ast.Tuple]
        if isinstance(value, ast.Name):
            return [value.id, ast.Name]
        if isinstance(value, ast.Attribute):
            return [self.expand_attribute(value), ast.Attribute]
        if isinstance(value, ast.Call):
            func = value.func
            if isinstance(func, ast.Name):
                return [func.id, ast.Call]
            if isinstance(func, ast.Call):
                return [func.func, ast.Call]
            return [self.expand_attribute(func), ast.Call]
        return list(UNKNOWN)

    def _is_locator_test(self, test):
        if isinstance(test, ast.Name):
            return test.id == LOCATOR
        return isinstance(test, ast.Compare) and isinstance(test.left, ast.Name) and test.left.id == LOCATOR

    def visit_If(self, node):
        if self._is_locator_test(node.test):
            self._set_locator()
        self.parse_children(node)

    def visit_While(self, node):
        try:
            if isinstance(node.test, ast.Name) and node.test.id == LOCATOR:
                self._set_locator()
        except Exception:
            pass
        self.parse_children(node)

    def visit_For(self, node):
        if not self.brindlet_lctr and isinstance(node.target, ast.Name):
            function = self._function()
            if function is not None:
                function.append_variable(node.target.id, list(UNKNOWN))
            elif self.class_index < 0:
                self.append_variable(node.target.id, list(UNKNOWN))
        self.parse_children(node)

    visit_AsyncFor = visit_For

    @staticmethod
    def expand_attribute(node):
        names = []
        while isinstance(node, ast.Attribute):
            names.append(node.attr)
            node = node.value
        if isinstance(node, ast.Name):
            names.append(node.id)
        return ".".join(reversed(names))

    @staticmethod
    def resolve_variable(variable, global_vars, class_vars, local_vars, self_vars, cls_vars):
        value, kind = variable
        for _ in range(MAX_LINKS):
            if not isinstance(value, (str, unicode)):
                break
            member = kind is ast.Attribute and (value.startswith("self.") or value.startswith("cls."))
            if kind is not ast.Name and not member:
                break
            found = None
            if kind is ast.Name:
                for scope in (local_vars, class_vars, global_vars):
                    if value in scope:
                        found = scope[value]
                        break
            else:
                owner, rest = value.split(".", 1)
                scope = self_vars if owner == "self" else cls_vars
                found = scope.get(rest, class_vars.get(rest))
            if found is None or found[0] == value:
                break
            value, kind = found
        return [value, kind]

    # The syntax check and single statements of the editor.

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
