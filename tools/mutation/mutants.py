"""Makes mutants of C++ sources by their syntax trees: faults of the kind that a developer makes by mistake."""
import collections
import os
import re

from clang.cindex import CursorKind as Kind
from clang.cindex import Diagnostic, Index, TypeKind

OPERATORS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
             "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "&": ["|"],
             "|": ["&"], "<<": [">>"], ">>": ["<<"], "+=": ["-="], "-=": ["+="], "*=": ["/="], "|=": ["&="]}
SIGN = re.compile(r"\+\+|--|!|-")
NUMBER = re.compile(r"(0x[0-9a-f']+|[\d']+\.?[\d']*(e[+-]?\d+)?)[ulf]*", re.IGNORECASE)
KEY = re.compile(r'(u|u8)?"[^\s"\\]{2,}"')
OPERATIONS = (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.CALL_EXPR)
STATEMENTS = (*OPERATIONS, Kind.UNARY_OPERATOR, Kind.CXX_DELETE_EXPR, Kind.CONTINUE_STMT, Kind.BREAK_STMT)
CONDITIONALS = (Kind.IF_STMT, Kind.WHILE_STMT, Kind.CONDITIONAL_OPERATOR)
NUMBERS = (TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.DOUBLE, TypeKind.FLOAT)

# In the file of a folder, the bytes from start to end are replaced by the text. The name shows the lines that this changes, as
# they were and as they are, with single blanks.
Mutant = collections.namedtuple("Mutant", "folder file kind line start end text before after name")


def span(cursor):
    return cursor.extent.start.offset, cursor.extent.end.offset


def type_of(cursor):
    return cursor.type.get_canonical().spelling.removeprefix("const ")


def changes(cursor, text):
    """What can be changed at a node of the tree, as (kind of fault, (start, end), other text)."""
    children, place, kind = [*cursor.get_children()], span(cursor), cursor.kind
    is_operator = cursor.spelling.startswith("operator") if kind == Kind.CALL_EXPR else kind in OPERATIONS
    if is_operator and len(children) > 1:
        between = span(children[0])[1], span(children[-1])[0]
        sign = text(*between).strip()
        yield from (("operator", between, text(*between).replace(sign, other)) for other in OPERATORS.get(sign, ()))
    elements = children if kind == Kind.INIT_LIST_EXPR else [*cursor.get_arguments()] if not is_operator else []
    for one, other in zip(elements, elements[1:]):
        (start, middle), (resumed, end) = span(one), span(other)
        if kind == Kind.INIT_LIST_EXPR:
            yield "dropped", (middle, end), ""
        if start < middle <= resumed < end and type_of(one) == type_of(other) != "void":
            yield "swapped", (start, end), text(resumed, end) + text(middle, resumed) + text(start, middle)
    if kind in CONDITIONALS and children and children[0].kind.is_expression():
        yield from (("condition", span(children[0]), other) for other in ("true", "false"))
        # Of a comparison it is the operator that is changed.
        if children[0].kind not in (Kind.BINARY_OPERATOR, Kind.UNARY_OPERATOR):
            yield "condition", span(children[0]), f"!({text(*span(children[0]))})"
    if kind == Kind.RETURN_STMT and children:
        result, returned = text(*span(children[0])), children[0].type.get_canonical().kind
        others = {TypeKind.BOOL: f"!({result})", TypeKind.POINTER: "nullptr"}
        yield "result", span(children[0]), others.get(returned, f"std::remove_cvref_t<decltype({result})>" "{}")
        if returned in NUMBERS:
            yield "result", span(children[0]), f"({result}) + 1"
    for statement in children if kind == Kind.COMPOUND_STMT else ():
        inner = statement
        while inner.kind == Kind.UNEXPOSED_EXPR and (within := [*inner.get_children()]):
            inner = within[0]
        if inner.kind in STATEMENTS:
            yield "removed", span(statement), ""
    value = text(*place)
    if kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL) and NUMBER.fullmatch(value):
        yield from (("constant", place, f"({value} {change})") for change in ("+ 1", "- 1", "* 2"))
    elif kind == Kind.CXX_BOOL_LITERAL_EXPR and value in ("true", "false"):
        yield "constant", place, "false" if value == "true" else "true"
    elif kind == Kind.STRING_LITERAL and KEY.fullmatch(value):
        yield "key", place, value[:-1] + '_"'
    elif kind == Kind.UNARY_OPERATOR and (sign := SIGN.match(value)):
        yield "operator", (place[0], place[0] + sign.end()), {"++": "--", "--": "++"}.get(sign[0], "")


def mutants_of(file, path, arguments):
    """All mutants of a source, each once, in their order in it; none of a source that isn't for this system."""
    unit, mutants = Index.create().parse(path, ["-x", "c++", *arguments]), {}
    if any(problem.severity >= Diagnostic.Error for problem in unit.diagnostics):
        return []
    with open(path, "rb") as opened:
        source = opened.read()
    own = [one for one in unit.cursor.get_children() if one.location.file and one.location.file.name == path]
    # A node that the compiler made of a format's text may begin or end within a character.
    found = {change for one in own for cursor in one.walk_preorder()
             for change in changes(cursor, lambda start, end: source[start:end].decode(errors="replace"))}
    for kind, (start, end), text in sorted(found, key=lambda change: change[1:]):
        first, last = source.rfind(b"\n", 0, start) + 1, source.find(b"\n", end)
        lines = source[first:last], source[first:start] + text.encode() + source[end:last]
        before, after = (" ".join(line.decode().split()) for line in lines)
        name, line = f"{file}: {before} -> {after}", source.count(b"\n", 0, start) + 1
        mutants.setdefault(name, Mutant(os.path.dirname(file), file, kind, line, start, end, text, before, after, name))
    return [*mutants.values()]
