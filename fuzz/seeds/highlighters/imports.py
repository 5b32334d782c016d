import os, sys # tools
import os.path as p
from a import b as c, d
from m import (a,
    b)
import a as b, c as d
