# Run by gdb: stops the program in Stop and prints the variables of main in the order of their declaration.
import re

import gdb

for setting in "confirm off", "width 0", "host-charset UTF-8", "auto-load local-gdbinit off":
    gdb.execute(f"set {setting}")
gdb.execute("break Stop", to_string=True)
gdb.breakpoints()[0].silent = True
gdb.execute("run", to_string=True)
frame = gdb.selected_frame().older()
for symbol in frame.block():
    value = symbol.value(frame)
    if value.type.code == gdb.TYPE_CODE_REF:
        value = value.referenced_value()
    if value.type.code != gdb.TYPE_CODE_PTR:
        text = value.format_string(symbols=False, max_elements=200)
        text = re.sub(r"0x[0-9a-f]{4,}", "(address)", text).replace("_vptr$", "_vptr.")
        print(f"{symbol.name} = {text}")
gdb.execute("kill", to_string=True)
