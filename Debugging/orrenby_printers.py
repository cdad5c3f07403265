"""How gdb shows the library's values: what they say, not how they are stored.

An installed library brings this file to where gdb looks for it. In a build folder: (gdb) source Debugging/orrenby_printers.py

Each printer reads memory and calls nothing, so it works on a core file and on a program that is stopped anywhere. One that
meets memory it cannot make sense of leaves that to gdb, which then prints an error in its place.
"""

import datetime
import re

import gdb
import gdb.printing

VERSION = r"(?:v\d+(?:_\w+)?::)?"  # the inline namespace, which gdb names or leaves out


# --- Reading the standard library's containers -------------------------------------------------------------------------


def text_of(string):
    """What a std::string holds, as bytes that are shown even where they are no UTF-8."""
    length = int(string["_M_string_length"])
    start = string["_M_dataplus"]["_M_p"]
    return bytes(gdb.selected_inferior().read_memory(int(start), length)).decode("utf-8", "backslashreplace") if length else ""


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"'


def elements_of(vector):
    place, end = vector["_M_impl"]["_M_start"], vector["_M_impl"]["_M_finish"]
    while place != end:
        yield place.dereference()
        place += 1


def target_of(shared_pointer):
    return shared_pointer["_M_ptr"].dereference()


# --- What several printers have in common -----------------------------------------------------------------------------


class OneMember:
    """A value that is shown as the one thing it wraps."""

    def __init__(self, value, member):
        self.wrapped = value[member]

    def to_string(self):
        if str(self.wrapped.type.strip_typedefs()).startswith("std::__cxx11::basic_string<char"):
            return quoted(text_of(self.wrapped))
        return self.wrapped


class ListOf:
    """A value that is shown as a list."""

    def __init__(self, value, name, elements):
        self.name, self.elements = name, list(elements(value))

    def to_string(self):
        return f"{self.name} of {len(self.elements)}"

    def children(self):
        return ((f"[{index}]", element) for index, element in enumerate(self.elements))

    def display_hint(self):
        return "array"


class OneOfTwo:
    """A value that is one thing or the other, shown with the name of what it is."""

    def __init__(self, name, held):
        self.name, self.held = name, held

    def to_string(self):
        return self.name

    def children(self):
        yield "held", self.held


# --- The printers -----------------------------------------------------------------------------------------------------


class Text:
    """A value of which a text says all."""

    def __init__(self, text):
        self.text = text

    def to_string(self):
        return self.text


PLAIN_KINDS = {"Bool": "boolean", "Int": "integer", "Float": "single", "Double": "number", "Date": "date"}


def any_value(value):
    """The value itself; of what the library has no kind for, the C++ value or the reference that is held."""
    kind, content = str(value["m_kind"]).rsplit("::", 1)[-1], value["m_content"]
    if kind == "Null":
        return Text("null")
    if kind in PLAIN_KINDS:
        return Text(content[PLAIN_KINDS[kind]])
    box = content["box"].dereference()
    held = box.cast(box.dynamic_type)["value"]
    if kind == "Text":
        return Text(quoted(text_of(held)))
    if kind == "Bytes":
        return Text(f"{len(list(elements_of(held)))} bytes")
    return ListOf(held, "Array", elements_of) if kind == "List" else Text(held)


class DictionaryPrinter:
    def __init__(self, value):
        self.entries = list(elements_of(value["m_entries"]))

    def to_string(self):
        return f"Dictionary of {len(self.entries)}"

    def children(self):
        for index, entry in enumerate(self.entries):
            yield f"key {index}", quoted(text_of(entry["key"]))
            yield f"value {index}", entry["value"]

    def display_hint(self):
        return "map"


class DatePrinter:
    """As text of ISO 8601, and as the number where no calendar reaches."""

    def __init__(self, value):
        self.seconds = float(value["m_seconds"])

    def to_string(self):
        try:
            date = datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=self.seconds)
            return date.isoformat(timespec="milliseconds") + "Z"
        except (OverflowError, ValueError):
            return f"{self.seconds!r} s since 1970"


class UUIDPrinter:
    def __init__(self, value):
        array = value["m_bytes"]["_M_elems"]
        self.digits = "".join(f"{int(array[index]):02X}" for index in range(16))

    def to_string(self):
        digits = self.digits
        return "-".join((digits[:8], digits[8:12], digits[12:16], digits[16:20], digits[20:]))


class NSErrorPrinter:
    def __init__(self, value):
        self.contents = target_of(value["m_contents"])

    def to_string(self):
        return f"NSError {text_of(self.contents['domain'])} {int(self.contents['code'])}"

    def children(self):
        yield "userInfo", self.contents["userInfo"]


class IndexPathPrinter:
    def __init__(self, value):
        self.indexes = [str(int(index)) for index in elements_of(value["m_indexes"])]

    def to_string(self):
        return f"[{', '.join(self.indexes)}]"


def payload(value):
    is_error = bool(value["m_isError"])
    return OneOfTwo("error", value["m_error"]) if is_error else OneOfTwo("value", value["m_value"])


def result(value):
    """The outcome is a std::variant, whose alternatives lie in one another, each inside the rest of the one before."""
    outcome = value["m_outcome"]
    index = int(outcome["_M_index"])
    storage = outcome["_M_u"] if index == 0 else outcome["_M_u"]["_M_rest"]
    held = storage["_M_first"]["_M_storage"]
    if held.type.strip_typedefs().code == gdb.TYPE_CODE_STRUCT and "aligned" in str(held.type):
        held = held["_M_storage"].address.cast(value.type.template_argument(index).pointer()).dereference()
    return OneOfTwo(("success", "failure")[index], held)


# Names without the namespace and without template arguments.
PRINTERS = {
    "Any": any_value,
    "AnyJSONValue": lambda value: OneMember(value, "m_value"),
    "CodingKey": lambda value: OneMember(value, "m_stringValue"),
    "Date": DatePrinter,
    "Dictionary": DictionaryPrinter,
    "EmailAddress": lambda value: OneMember(value, "m_stringValue"),
    "Identifier": lambda value: OneMember(value, "m_rawValue"),
    "IndexPath": IndexPathPrinter,
    "JSONObject": lambda value: OneMember(value, "m_value"),
    "NSError": NSErrorPrinter,
    "NSNull": lambda value: Text("null"),
    "NSOrderedSet": lambda value: ListOf(value, "NSOrderedSet", lambda set_: elements_of(set_["m_objects"])),
    "NSSet": lambda value: ListOf(value, "NSSet", lambda set_: elements_of(set_["m_objects"])),
    "NotificationName": lambda value: OneMember(value, "m_rawValue"),
    "OrderedSet": lambda value: ListOf(value, "OrderedSet", lambda set_: elements_of(set_["m_members"]["m_array"])),
    "Result": result,
    "Streams::Payload": payload,
    "URL": lambda value: OneMember(value, "m_text"),
    "UUID": UUIDPrinter,
    "Void": lambda value: Text("()"),
}


def collection():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("orrenby")
    for name, printer in PRINTERS.items():
        parts = [re.escape(part) for part in name.split("::")]
        pattern = "^orrenby::" + VERSION + "::".join(parts) + "(?:<.*>)?$"
        printers.add_printer(name, pattern, printer)
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), collection(), replace=True)
