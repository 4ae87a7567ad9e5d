# Prepares a public header for Doxygen, so that its comments need no markup:
#
# - The banner, the first comment at the start of a line, becomes the page of the file.
# - The comment above an overload, or above the reading operation of a property, is also that of the further
#   overloads, or of the writing operation, that follow without a blank line or a comment between.
# - Characters that Doxygen would take as commands are escaped, except in indented code and in `code`.

function escape(line,    parts, count, i, text) {
    count = split(line, parts, "`")
    for (i = 1; i <= count; i++) {
        if (i % 2 == 1) {
            gsub(/\\/, "&&", parts[i])
            gsub(/[@#<>%&]/, "\\\\&", parts[i])
        }
        text = text (i > 1 ? "`" : "") parts[i]
    }
    return text
}

# A line with the text of its contract comment escaped.
function prepared(line,    start) {
    start = match(line, /\/\/\/<?/)
    if (!start || line ~ /^ *\/\/\/     /) return line
    return substr(line, 1, start + RLENGTH - 1) escape(substr(line, start + RLENGTH))
}

# The name that a declaration shares with its overloads, and with the other operation of its property.
function name_of(declaration,    name) {
    if (declaration ~ /~|= (delete|default);|& other\)/) return ""
    if (!match(declaration, /(operator[^ (]+|[A-Za-z_0-9]+)\(/)) return ""
    name = substr(declaration, RSTART, RLENGTH - 1)
    sub(/^[GS]et_?/, "", name)
    return name
}

# Prints the lines that are held back: the members of the group, then the declaration that did not join it.
function flush(    i) {
    if (members > 1) print "///@{"
    for (i = 1; i <= held; i++) {
        print lines[i]
        if (members > 1 && i == groupEnd) print "///@}"
    }
    held = members = groupEnd = depth = 0
    declaration = ""
    state = "outside"
}

BEGIN { state = "outside" }

!hasPage && /^(\/\/\/|namespace)/ {
    print "/// @file"
    if (/^namespace/) print ""
    hasPage = 1
}

/^ *\/\/\// {
    if (state == "declarations") flush()
    state = "comment"
    lines[++held] = prepared($0)
    next
}

state != "outside" && (depth > 0 || !/^ *($|\/\/|[a-z]+:|[}])/) {
    state = "declarations"
    lines[++held] = prepared($0)
    code = $0
    sub(/\/\/.*/, "", code)
    declaration = declaration code
    depth += gsub(/[{]/, "{", code) - gsub(/[}]/, "}", code)
    if (depth > 0 || code !~ /[;}] *$/) next
    name = name_of(declaration)
    declaration = ""
    if (members == 0) first = name
    if (name != "" && name == first) {
        members++
        groupEnd = held
    } else {
        flush()
    }
    next
}

state != "outside" { flush() }

{ print prepared($0) }

END { flush() }
