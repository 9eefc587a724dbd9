#!/usr/bin/env python3
"""Generates the NX interface conformance check from the NX 8.5 interface sheet.

The sheet lists the NX 8.5 declarations the plug-in uses in machine-checkable tables, each
introduced by a line "Members of", "Enum", "Struct", "Typedefs of", "Macros in",
"Prototypes in", "Functions in namespace" or "Chain". This tool turns every row into a C++98
compile-time check against the NX headers:

  - a member function: its address taken into a pointer of exactly the written type;
  - a constructor: an object built from arguments of the written types (also copy-initialised
    when the sheet says the constructor is not explicit); a destructor: a delete-expression,
    and for a virtual one a dynamic_cast that needs a polymorphic class;
  - a typedef: a same-type test; an enumerator and a macro: a compile-time value test (and
    an enumerator converts to its enum type); a struct field: a data-member pointer of the
    written type, plus the typedef names of the struct;
  - a chain: every derived-to-base pointer conversion along it;
  - a UF prototype: a pointer of the written type and a redeclaration with C linkage (a
    different signature or linkage conflicts with the header's declaration);
  - a free function: its address in a pointer of the written type.

The output compiles with `g++ -std=c++98 -pedantic-errors -fsyntax-only -I host/include`;
every error points at a row whose declaration the headers do not match.

Usage: python3 tools/nxapi_check.py SHEET OUTPUT.cpp
"""

import re
import sys

INTRO = re.compile(
    r"^(Members of|Enum|Struct|Typedefs of|Macros in|Prototypes in|Functions in namespace|Chain:)\s+(.*)$")
CODE = re.compile(r"`([^`]*)`")
IDENT = re.compile(r"^[A-Za-z_]\w*$")
# Words that end a parameter's type rather than name the parameter ("unsigned int").
TYPE_WORDS = {"int", "char", "double", "float", "bool", "void", "long", "short", "unsigned", "signed",
              "const", "volatile"}


def split_top(text, sep=","):
    """Splits text at sep where it is not nested in <>, () or []."""
    parts, depth, current = [], 0, ""
    for ch in text:
        if ch in "<([":
            depth += 1
        elif ch in ">)]":
            depth -= 1
        if ch == sep and depth == 0:
            parts.append(current)
            current = ""
        else:
            current += ch
    if current.strip():
        parts.append(current)
    return [p.strip() for p in parts]


def param_type(param):
    """The type of one parameter declaration: default value and name removed, an array
    parameter kept as an array of its bound ("char message[133]" -> "char [133]")."""
    param = split_top(param, "=")[0].strip()
    array = ""
    m = re.search(r"(\[[^\]]*\])\s*$", param)
    if m:
        array = m.group(1)
        param = param[:m.start()].strip()
    tokens = re.findall(r"::|[A-Za-z_]\w*(?:<[^;]*>)?|[*&]|[^\sA-Za-z_]", param)
    if len(tokens) >= 2 and IDENT.match(tokens[-1]) and tokens[-1] not in TYPE_WORDS and tokens[-2] != "::":
        param = param[:param.rstrip().rfind(tokens[-1])].rstrip()
    return (param + (" " + array if array else "")).strip()


def find_call_parens(decl):
    """Positions of the parameter list's parentheses: the first '(' at template depth 0 that
    follows the function's name (operator() is not used in the sheet)."""
    depth = 0
    for i, ch in enumerate(decl):
        if ch == "<":
            depth += 1
        elif ch == ">":
            depth -= 1
        elif ch == "(" and depth == 0:
            level = 0
            for j in range(i, len(decl)):
                if decl[j] == "(":
                    level += 1
                elif decl[j] == ")":
                    level -= 1
                    if level == 0:
                        return i, j
    raise ValueError("no parameter list in: " + decl)


class Function:
    """A parsed function declaration of the sheet."""

    def __init__(self, decl):
        self.decl = decl
        open_, close = find_call_parens(decl)
        head = decl[:open_].strip()
        self.params = [param_type(p) for p in split_top(decl[open_ + 1:close])]
        if self.params == ["void"]:
            self.params = []
        tail = decl[close + 1:].strip()
        self.const = tail.startswith("const")
        self.throw = "throw()" in tail
        self.static = head.startswith("static ")
        self.virtual = head.startswith("virtual ")
        head = re.sub(r"^(static|virtual|explicit)\s+", "", head)
        m = re.search(r"(~?[A-Za-z_]\w*|operator\s*\S+)$", head)
        self.name = m.group(1).replace(" ", "")
        self.ret = head[:m.start()].strip()

    def param_list(self):
        return ", ".join(self.params)


class Generator:
    def __init__(self):
        self.lines = []
        self.counter = 0
        self.counts = {}

    def next_id(self, kind):
        self.counter += 1
        self.counts[kind] = self.counts.get(kind, 0) + 1
        return "%s_%d" % (kind, self.counter)

    def emit(self, text=""):
        self.lines.append(text)

    def comment(self, text):
        self.emit("// " + text)

    def assert_true(self, kind, condition):
        self.emit("typedef char %s[(%s) ? 1 : -1];" % (self.next_id(kind), condition))

    def same_type(self, kind, a, b):
        self.emit("typedef char %s[same_type< %s, %s >::value];" % (self.next_id(kind), a, b))

    # --- rows ----------------------------------------------------------------------------

    def member(self, cls, decl, meaning):
        short = cls.split("::")[-1]
        f = Function(decl)
        # Inside its class the header names the class unqualified ("const NXException & other").
        f.params = [re.sub(r"(?<![\w:])%s(?![\w:])" % short, cls, p) for p in f.params]
        self.comment(decl)
        if f.name == short:
            self.constructor(cls, f, meaning)
        elif f.name == "~" + short:
            self.destructor(cls, f)
        elif f.static:
            self.emit("%s (*%s)(%s)%s = &%s::%s;" % (
                f.ret, self.next_id("member"), f.param_list(), " throw()" if f.throw else "", cls, f.name))
        else:
            self.emit("%s (%s::*%s)(%s)%s%s = &%s::%s;" % (
                f.ret, cls, self.next_id("member"), f.param_list(), " const" if f.const else "",
                " throw()" if f.throw else "", cls, f.name))

    def constructor(self, cls, f, meaning):
        fn = self.next_id("constructor")
        args = ["a%d" % i for i in range(len(f.params))]
        params = ", ".join(declare(t, a) for t, a in zip(f.params, args))
        self.emit("inline void %s(%s) {" % (fn, params))
        self.emit("    %s object%s;" % (cls, "(" + ", ".join(args) + ")" if args else ""))
        self.emit("    (void)object;")
        if len(args) >= 1 and "not `explicit`" in meaning:
            self.emit("    %s converted = a0;  // not explicit" % cls)
            self.emit("    (void)converted;")
        self.emit("}")

    def destructor(self, cls, f):
        fn = self.next_id("destructor")
        self.emit("inline void %s(%s *object) {" % (fn, cls))
        self.emit("    delete object;")
        if f.virtual:
            self.emit("    (void)dynamic_cast<void *>(object);  // needs a polymorphic class")
        self.emit("}")

    def enum_value(self, enum, member, value):
        scope = enum.rsplit("::", 1)[0]
        self.comment("%s::%s = %s" % (enum, member, value))
        self.assert_true("enum", "%s::%s == %s" % (scope, member, value))
        self.emit("const %s %s = %s::%s;" % (enum, self.next_id("enum_type"), scope, member))

    def field(self, struct, decl):
        m = re.match(r"^(.*?)([A-Za-z_]\w*)\s*(\[[^\]]*\])?$", decl.strip())
        ftype, name, array = m.group(1).strip(), m.group(2), m.group(3)
        self.comment("%s::%s" % (struct, decl))
        if array:
            self.emit("%s (%s::*%s)%s = &%s::%s;" % (ftype, struct, self.next_id("field"), array, struct, name))
        else:
            self.emit("%s %s::*%s = &%s::%s;" % (ftype, struct, self.next_id("field"), struct, name))

    def typedef(self, cls, decl):
        m = re.match(r"^typedef\s+(.*\S)\s+([A-Za-z_]\w*)$", decl.strip())
        self.comment(decl)
        self.same_type("typedef", "%s::%s" % (cls, m.group(2)), m.group(1))

    def macro(self, name, value):
        self.comment("#define %s %s" % (name, value))
        self.emit("#ifndef %s" % name)
        self.emit("#error \"%s is not defined\"" % name)
        self.emit("#endif")
        self.assert_true("macro", "%s == %s" % (name, value))

    def prototype(self, decl):
        f = Function(decl)
        self.comment(decl)
        self.emit("%s (*%s)(%s) = &%s;" % (f.ret, self.next_id("prototype"), f.param_list(), f.name))
        self.emit('extern "C" %s;' % decl)

    def free_function(self, namespace, decl):
        f = Function(decl)
        self.comment(decl)
        self.emit("%s (*%s)(%s) = &%s::%s;" % (f.ret, self.next_id("function"), f.param_list(), namespace, f.name))

    def chain(self, classes):
        self.comment(" -> ".join(classes))
        for i in range(len(classes)):
            for j in range(i + 1, len(classes)):
                self.emit("inline %s *%s(%s *derived) { return derived; }" % (
                    classes[j], self.next_id("base"), classes[i]))


def declare(type_, name):
    """A declaration of name with type_ ("char [133]" -> "char name[133]")."""
    m = re.match(r"^(.*?)\s*(\[[^\]]*\])$", type_)
    if m:
        return "%s %s%s" % (m.group(1), name, m.group(2))
    return "%s %s" % (type_, name)


def read_table(lines, start):
    """The data rows (lists of cells) of the table that follows line start."""
    i = start + 1
    while i < len(lines) and not lines[i].startswith("|"):
        if lines[i].strip():
            raise ValueError("line %d: a table was expected" % (start + 1))
        i += 1
    rows = []
    i += 2  # header and separator
    while i < len(lines) and lines[i].startswith("|"):
        rows.append([c.strip() for c in lines[i].strip().strip("|").split(" | ")])
        i += 1
    return rows


def code(cell):
    m = CODE.search(cell)
    if not m:
        raise ValueError("no code in cell: " + cell)
    return m.group(1)


HEADERS = """\
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_BodyCollector.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_ScrolledWindow.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/BlockStyler_TreeListMenu.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/DataContainer.hxx>
#include <NXOpen/DisplayableObject.hxx>
#include <NXOpen/Layer.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/ListingWindow.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/PropertyContainer.hxx>
#include <NXOpen/Selection.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/TransientObject.hxx>
#include <NXOpen/UI.hxx>
#include <NXOpen/Update.hxx>
#include <uf.h>
#include <uf_attr.h>
#include <uf_attr_datatypes.h>
#include <uf_defs.h>
#include <uf_layer.h>
#include <uf_modl.h>
#include <uf_obj.h>
#include <uf_obj_types.h>
#include <uf_object_types.h>
#include <uf_ui_types.h>
#include <uf_ugopenint.h>
"""


def generate(sheet):
    lines = sheet.splitlines()
    g = Generator()
    for n, line in enumerate(lines):
        m = INTRO.match(line)
        if not m:
            continue
        kind, rest = m.group(1), m.group(2)
        g.emit()
        g.comment("%s %s" % (kind, rest.rstrip(":")))
        if kind == "Chain:":
            g.chain(CODE.findall(rest))
            continue
        subject = code(rest)
        rows = read_table(lines, n)
        if kind == "Members of":
            for row in rows:
                g.member(subject, code(row[0]), row[1] if len(row) > 1 else "")
        elif kind == "Enum":
            for row in rows:
                g.enum_value(subject, code(row[0]), row[1])
        elif kind == "Struct":
            for row in rows:
                decl = code(row[0])
                if re.match(r"^%s\s*\(" % re.escape(subject.split("::")[-1]), decl):
                    g.member(subject, decl, row[1])
                else:
                    g.field(subject, decl)
            for td in re.findall(r"typedef (?:struct|union) \w+ ([^;]*);", rest):
                for name in split_top(td):
                    pointer = name.startswith("*")
                    g.same_type("struct_typedef", name.lstrip("*").strip(), subject + (" *" if pointer else ""))
        elif kind == "Typedefs of":
            for row in rows:
                g.typedef(subject, code(row[0]))
        elif kind == "Macros in":
            for row in rows:
                g.macro(code(row[0]), row[1])
        elif kind == "Prototypes in":
            for row in rows:
                g.prototype(code(row[0]))
        elif kind == "Functions in namespace":
            for row in rows:
                g.free_function(subject, code(row[0]))
    return g


def main(argv):
    if len(argv) != 3:
        sys.stderr.write("usage: nxapi_check.py SHEET OUTPUT.cpp\n")
        return 2
    with open(argv[1], encoding="utf-8") as f:
        g = generate(f.read())
    summary = ", ".join("%s %d" % (k, v) for k, v in sorted(g.counts.items()))
    out = []
    out.append("// NX 8.5 interface conformance check: every declaration of the NX 8.5 interface sheet,")
    out.append("// checked at compile time against the NX headers the plug-in compiles with.")
    out.append("// Generated by tools/nxapi_check.py; do not edit. Checks: %s." % summary)
    out.append("// Compile: g++ -std=c++98 -pedantic-errors -fsyntax-only -I host/include <this file>")
    out.append("")
    out.append(HEADERS)
    out.append("namespace nxapi_check {")
    out.append("")
    out.append("using NXOpen::NXString;")
    out.append("")
    out.append("template <class A, class B> struct same_type;  // no definition: different types do not compile")
    out.append("template <class A> struct same_type<A, A> { enum { value = 1 }; };")
    out.extend(g.lines)
    out.append("")
    out.append("}  // namespace nxapi_check")
    with open(argv[2], "w", encoding="utf-8", newline="\n") as f:
        f.write("\n".join(out) + "\n")
    sys.stdout.write("%s: %s\n" % (argv[2], summary))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
