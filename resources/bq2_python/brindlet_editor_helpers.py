# Helpers the editor calls in Maya's Python by name.
import keyword
import os
import sys

import maya.mel


class BrindletEditorHelpers(object):
    # Names in sys.modules when the snapshot was taken; None until then.
    module_names = None

    @classmethod
    def list_keywords(cls):
        words = list(keyword.kwlist)
        for word in ("True", "False", "None"):
            if word not in words:
                words.append(word)
        return words

    @classmethod
    def list_builtins(cls):
        return dir(__builtins__)

    @classmethod
    def python_version(cls):
        info = sys.version_info
        return "{0}.{1}.{2}".format(info.major, info.minor, info.micro)

    @classmethod
    def get_python_path_str(cls):
        return os.pathsep.join(sys.path)

    @classmethod
    def print_python_path(cls):
        print("\nsys.path:")
        for path in sys.path:
            print(path)

    @classmethod
    def print_python_environ(cls):
        print("\nos.environ")
        for key in sorted(os.environ.keys()):
            print("{0}: {1}".format(key, os.environ[key]))

    @classmethod
    def print_maya_env_var_paths(cls, env_var):
        value = maya.mel.eval('getenv "{0}"'.format(env_var))
        print("\n{0}:".format(env_var))
        for path in value.split(os.pathsep):
            print(path)

    @classmethod
    def update_modules(cls):
        cls.module_names = list(sys.modules.keys())

    @classmethod
    def revert_modules(cls):
        if cls.module_names is None:
            return
        # A copy: the dictionary changes during the walk.
        for name in list(sys.modules.keys()):
            if name not in cls.module_names:
                del sys.modules[name]
