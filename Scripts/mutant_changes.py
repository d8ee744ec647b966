"""The changes that ./run mutants makes: every place of a C++ source where a small change is possible, with its effect.

Sources are read as they are laid out here: blanks on both sides of binary operators, braces around every body.
"""
import dataclasses
import re

OPERATORS = {
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"],
    "==": ["!="], "!=": ["=="], "<": ["<="], "<=": ["<"], ">": [">="], ">=": [">"],
    "&&": ["||"], "||": ["&&"], "&": ["|"], "|": ["&"], "<<": [">>"], ">>": ["<<"],
    "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="], "|=": ["&="], "&=": ["|="],
}
OPERATOR = re.compile(r"(?<=\s)(?:" + "|".join(re.escape(text) for text in sorted(OPERATORS, key=len, reverse=True)) +
                      r")(?=\s)")
STEP = re.compile(r"\+\+|--")
NUMBER = re.compile(r"(?<![\w.'])(?:0x[0-9A-Fa-f']+|\d[\d']*\.?\d*(?:[eE][-+]?\d+)?)([uUlLfF]*)(?![\w.'])")
TRUTH = re.compile(r"\b(?:true|false)\b")
CONDITION = re.compile(r"\b(?:if|while) \(")

# Comments, texts, characters, and lines of the preprocessor with those that continue them.
OPAQUE = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|'
                    r'^[ \t]*#(?:[^\n]*\\\n)*[^\n]*', re.S | re.M)
# What holds no code that runs, or whose change could only break the build.
DECLARATIVE = re.compile(r"\bstatic_assert\(|^\s*(?:using|namespace|template|friend|extern)\b|= (?:0|default|delete);")

NAME = r"(?:\*?\(?[\w:]+(?:<[^<>;]*>)?(?:\([^()]*\)|\[[^\]]*\])?\)?(?:\.|->|::))*\*?[\w:]+"
CALL = re.compile(NAME + r"(?:<[^<>;]*>)?\(.*\)$", re.S)
ASSIGNMENT = re.compile(r"\*?" + NAME + r"(?:\[[^\]]*\])* (?:[-+*/|&^%]|<<|>>)?= ", re.S)
SINGLE = re.compile(r"(?:break|continue|(?:\+\+|--)[\w.>\-\[\]]+|[\w.>\-\[\]]+(?:\+\+|--)|throw .*)$", re.S)
NO_CALL = re.compile(r"(?:return|if|while|for|switch|case|else|do|sizeof|static_cast|using|goto)\b")
# What stands before the brace of a body of code, and of anything else.
BEFORE_CODE = re.compile(r"(?:\)|\b(?:const|noexcept|override|final|else|do|try|mutable)|-> [\w:<>*& ]+|\]|:)\s*$")
BEFORE_OTHER = re.compile(r"\b(?:class|struct|enum|union|namespace)\b[^()]*$")


@dataclasses.dataclass(frozen=True)
class Change:
    """One change of one file: the text from `start` to `end` becomes `text`."""
    file: str  # from the project's root, with slashes
    line: int
    start: int
    end: int
    text: str
    before: str  # the changed lines, blanks reduced
    after: str

    def key(self):
        """Survives changes elsewhere in the file."""
        return f"{self.file}\n- {self.before}\n+ {self.after}"

    def apply(self, source):
        return source[:self.start] + self.text + source[self.end:]


def blanked(source):
    """The source with everything opaque replaced by as many blanks; texts keep their quotes."""
    def blank(match):
        text = match.group()
        if text[0] in "\"'":
            return text[0] + "_" * (len(text) - 2) + text[-1]
        return re.sub(r"[^\n]", " ", text)
    return OPAQUE.sub(blank, source)


def changed_numbers(text, suffix):
    """Other numbers of the same type: one more, zero, and twice as much."""
    digits = text.removesuffix(suffix).replace("'", "") if suffix else text.replace("'", "")
    if digits.startswith("0x"):
        value = int(digits, 16)
        others = [hex(other) for other in (value + 1, 0, 2 * value)]
        same = hex(value)
    elif re.fullmatch(r"\d+", digits):
        value = int(digits)
        others = [str(other) for other in (value + 1, 0, 2 * value)]
        same = str(value)
    else:
        value = float(digits)
        others = [repr(other) for other in (value + 1.0, 0.0, 2.0 * value)]
        same = repr(value)
    return [other + suffix for other in dict.fromkeys(others) if other != same]


def token_changes(code):
    for match in OPERATOR.finditer(code):
        for other in OPERATORS[match.group()]:
            yield match.start(), match.end(), other
    for match in STEP.finditer(code):
        yield match.start(), match.end(), "--" if match.group() == "++" else "++"
    for match in NUMBER.finditer(code):
        for other in changed_numbers(match.group(), match.group(1)):
            yield match.start(), match.end(), other
    for match in TRUTH.finditer(code):
        yield match.start(), match.end(), "false" if match.group() == "true" else "true"


def closing(code, opening):
    """The position of the parenthesis that closes the one at `opening`."""
    depth = 0
    for position in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[position], 0)
        if depth == 0:
            return position
    return len(code)


def condition_changes(code):
    for match in CONDITION.finditer(code):
        end = closing(code, match.end() - 1)
        condition = code[match.end():end]
        start = match.end() + condition.rfind(";") + 1
        start += len(code[start:end]) - len(code[start:end].lstrip())
        text = code[start:end]
        is_declaration = re.search(r"[^=!<>]=(?!=)", text)
        # Such a comparison alone is negated by its other operator already.
        is_comparison = re.search(r" [=!]= ", text) and not re.search(r" (?:&&|\|\|) ", text)
        if not is_declaration and not is_comparison and "{" not in condition:
            yield start, end, None


def statements(code):
    """(start, end, block) of every statement in a body of code, without what precedes and with its semicolon; block
    tells which statements stand beside each other."""
    blocks = []  # (is code, number) of the braces that are open
    number = depth = start = 0
    for position, character in enumerate(code):
        if character == "(":
            depth += 1
        elif character == ")":
            depth -= 1
        elif character == "{":
            head = code[start:position]
            is_code = bool(BEFORE_CODE.search(head)) and not BEFORE_OTHER.search(head)
            number += 1
            blocks.append((is_code, number, depth))
            depth, start = 0, position + 1
        elif character == "}":
            if blocks:
                depth = blocks.pop()[2]
            number += 1
            start = position + 1
        elif character == ";" and depth == 0:
            if blocks and blocks[-1][0]:
                first = position - len(code[start:position].lstrip())
                yield first, position + 1, (blocks[-1][1], number)
            start = position + 1


def is_removable(text):
    if NO_CALL.match(text) or "{" in text:
        return False
    return bool(CALL.match(text) or ASSIGNMENT.match(text) or SINGLE.match(text))


def statement_changes(code):
    last = None
    for start, end, block in statements(code):
        text = code[start:end - 1]
        if not is_removable(text):
            last = None
            continue
        yield start, end, ";"
        if last is not None and last[2] == block and code[last[0]:last[1]] != code[start:end]:
            yield last[0], end, (last[0], last[1], start)
        last = (start, end, block)


def changes_of(file, source):
    """Every possible change of the source of that name, in the order of their places."""
    code = blanked(source)
    found = [*token_changes(code), *condition_changes(code), *statement_changes(code)]
    made = {}
    for start, end, text in found:
        if text is None:
            text = f"!({source[start:end]})"
        elif isinstance(text, tuple):
            first, first_end, second = text
            text = source[second:end] + source[first_end:second] + source[first:first_end]
        line_start = source.rfind("\n", 0, start) + 1
        line_end = source.find("\n", end) if "\n" in source[end:] else len(source)
        if DECLARATIVE.search(code[line_start:line_end]):
            continue
        after = source[line_start:start] + text + source[end:line_end]
        change = Change(file, source.count("\n", 0, start) + 1, start, end, text,
                        " ".join(source[line_start:line_end].split()), " ".join(after.split()))
        made[(start, end, text)] = change
    return [made[place] for place in sorted(made)]
