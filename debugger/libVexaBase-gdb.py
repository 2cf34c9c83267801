# Loaded by gdb together with the library, from share/gdb/auto-load: it has this file under the library's own path.
import inspect
import os
import sys

import gdb

# Not __file__, which is another script's where that one runs the program.
this_file = os.path.realpath(inspect.currentframe().f_code.co_filename)
data_dir = this_file.partition("/gdb/auto-load/")[0]
sys.path.insert(0, os.path.join(data_dir, "vexabase", "gdb"))

import vexabase_printers

vexabase_printers.register(gdb.current_objfile())
