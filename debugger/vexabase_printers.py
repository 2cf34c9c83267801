"""Pretty-printers for gdb: VexaBase's containers, strings, streams, events, individuals and graphs.

gdb loads them by itself with an installed library (see libVexaBase-gdb.py). By hand, for instance for a static
library: `source .../share/vexabase/gdb/vexabase_printers.py`.

Containers show their length, their cursor and their elements; an owning one shows the objects, as what they are. A
class derived from one of these is shown by gdb as usual, its base within it printed by what is here.
"""

import itertools

import gdb
import gdb.printing


def length(value):
    return int(value["m_nLength"])


def cursor(value):
    index = int(value["m_nCurIndex"])
    return "cursor on none" if index == -1 else f"cursor on {index}"


def count(n, noun):
    return f"{n} {noun}" if n == 1 else f"{n} {noun}s"


def type_name(value):
    return str(value.type.strip_typedefs().unqualified())


def objects(pointers):
    """What the pointers point to, each as its own class; a null stays a pointer."""
    for pointer in pointers:
        if int(pointer) == 0:
            yield pointer
        else:
            yield pointer.cast(pointer.dynamic_type).dereference()


def is_complete(type):
    """Whether there is more to the type than its name. Compilers leave the classes of a library out of a program's debug
    information, for they expect them in the library's, which may have none."""
    type = type.strip_typedefs()
    return type.code != gdb.TYPE_CODE_STRUCT or bool(type.fields())


def block_elements(value):
    data = value["m_pData"]
    if not is_complete(data.type.target()):
        return ()
    return (data[i] for i in range(length(value)))


def list_elements(value):
    """By the nodes' layout, the element first and then the way on: a program that does not walk a list itself may
    have no more of the node type than its name."""
    head = value["m_pHead"]
    element = head.type.target().template_argument(0)
    if not is_complete(element):
        return
    link = head.type.pointer()
    offset_of_link = -(-element.sizeof // link.sizeof) * link.sizeof
    node = int(head)
    for _ in range(length(value)):
        node = int(gdb.Value(node + offset_of_link).cast(link).dereference())
        yield gdb.Value(node).cast(element.pointer()).dereference()


def numbered(elements):
    return ((f"[{i}]", element) for i, element in enumerate(elements))


class Sequence:
    """Elements in order behind a line that says what holds them."""

    def __init__(self, value):
        self.value = value

    def display_hint(self):
        return "array"

    def children(self):
        return numbered(self.elements())


class Array(Sequence):
    """KyArray: a block without a cursor."""

    def to_string(self):
        return f"{type_name(self.value)} of length {length(self.value)}"

    def elements(self):
        return block_elements(self.value)


class DynArray(Sequence):
    def to_string(self):
        capacity = int(self.value["m_nCapacity"])
        return f"{type_name(self.value)} of length {length(self.value)}, capacity {capacity}, {cursor(self.value)}"

    def elements(self):
        return block_elements(self.value)


class DynPArray(DynArray):
    def elements(self):
        return objects(block_elements(self.value))


class List(Sequence):
    def to_string(self):
        return f"{type_name(self.value)} of length {length(self.value)}, {cursor(self.value)}"

    def elements(self):
        return list_elements(self.value)


class PList(List):
    def elements(self):
        return objects(list_elements(self.value))


class Queue(Sequence):
    def to_string(self):
        bound = int(self.value["m_nMaxLength"])
        limit = "" if bound < 0 else f" of at most {bound}"
        return f"{type_name(self.value)} of length {length(self.value['m_list'])}{limit}"

    def elements(self):
        return list_elements(self.value["m_list"])


class PQueue(Queue):
    def elements(self):
        return objects(list_elements(self.value["m_list"]))


class String:
    def __init__(self, value):
        self.value = value

    def display_hint(self):
        return "string"

    def to_string(self):
        return self.value["m_pData"].lazy_string(length=int(self.value["m_nStrLength"]))


class Stream(Sequence):
    """The bytes of KyDynArrayStream, each as a number and a character."""

    def to_string(self):
        position = int(self.value["m_nPos"])
        return f"{type_name(self.value)} of {count(length(self.value), 'byte')}, position {position}"

    def elements(self):
        return block_elements(self.value["m_bytes"])


class ChunkedStream(Stream):
    def elements(self):
        chunks = block_elements(self.value["m_chunks"])
        bytes_of_chunks = (block_elements(chunk.dereference()["m_bytes"]) for chunk in chunks)
        return itertools.islice(itertools.chain.from_iterable(bytes_of_chunks), length(self.value))


class Event:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return f"KyEvent with mask {int(self.value['m_nMask']):#x}"

    def children(self):
        yield "m_strName", self.value["m_strName"]
        yield "m_pData", self.value["m_pData"]


class Individual(Sequence):
    def to_string(self):
        return f"GA_Individual of {count(length(self.value), 'gene')}"

    def elements(self):
        return objects(block_elements(self.value))


class Population(Sequence):
    def to_string(self):
        value = self.value
        return (
            f"GA_Population of {count(length(value), 'individual')}, size {int(value['m_nPopSize'])}, "
            f"mutation rate {int(value['m_nMutationRate'])} %, generation {int(value['m_nGeneration'])}"
        )

    def elements(self):
        return objects(list_elements(self.value))


class GraphNode(Sequence):
    """The arcs around a node, in rotational order, as the pointers they are: the node does not own them."""

    def to_string(self):
        arcs = count(length(self.value["m_lstArc"]), "arc")
        return f"KyGraphNode with {arcs}, bits {int(self.value['m_nBits']):#x}"

    def elements(self):
        return list_elements(self.value["m_lstArc"])


class GraphArc:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return f"KyGraphArc with bits {int(self.value['m_nBits']):#x}"

    def children(self):
        yield "m_pStart", self.value["m_pStart"]
        yield "m_pEnd", self.value["m_pEnd"]


class GraphPath(Sequence):
    def to_string(self):
        begin = self.value["m_pBeginNode"].format_string(symbols=False)
        return f"KyGraphPath of {count(length(self.value), 'arc')} from {begin}, {cursor(self.value)}"

    def elements(self):
        return list_elements(self.value)


class Graph:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        nodes = count(length(self.value["m_lstNode"]), "node")
        return f"KyGraph of {nodes} and {count(length(self.value['m_lstArc']), 'arc')}"

    def children(self):
        for field in "m_nUserData", "m_lstNode", "m_lstArc":
            yield field, self.value[field]


PRINTERS = {
    "KyArray": Array,
    "KyDynArray": DynArray,
    "KyDynPArray": DynPArray,
    "KyList": List,
    "KyDList": List,
    "KyPDList": PList,
    "KyXList": List,
    "KyPXList": PList,
    "KyListQuene": Queue,
    "KyPDListQuene": PQueue,
    "KyString": String,
    "KyDynArrayStream": Stream,
    "KyDynArrayStreamEx": ChunkedStream,
    "KyEvent": Event,
    "GA_Individual": Individual,
    "GA_Population": Population,
    "KyGraphNode": GraphNode,
    "KyGraphArc": GraphArc,
    "KyGraphPath": GraphPath,
    "KyGraph": Graph,
}


class Printers(gdb.printing.PrettyPrinter):
    """Looks a class up by its name, without template arguments."""

    def __init__(self):
        names = [gdb.printing.SubPrettyPrinter(name) for name in sorted(PRINTERS)]
        super().__init__("VexaBase", names)
        self.enabled_of = {name.name: name for name in names}

    def __call__(self, value):
        tag = value.type.strip_typedefs().unqualified().tag
        name = tag.partition("<")[0] if tag else None
        if name not in PRINTERS or not self.enabled_of[name].enabled:
            return None
        printer = PRINTERS[name](value)
        try:
            printer.to_string()
        except gdb.error:
            return None  # a field's class is not complete: gdb shows what there is
        return printer


def register(objfile):
    gdb.printing.register_pretty_printer(objfile, Printers(), replace=True)


if __name__ == "__main__":
    register(None)
