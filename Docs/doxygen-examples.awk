# The ladder of examples as the documentation site reads it: a program becomes a page that shows it, under its opening comment, and
# what the list of programs links to are these pages.

{ lines[NR] = $0 }

END {
    if (FILENAME ~ /README\.md$/) {
        for (i = 1; i <= NR; ++i)
            print linked(lines[i])
        exit
    }
    name = FILENAME
    sub(/.*\//, "", name)
    print "/** @example " name
    for (i = 1; lines[i] ~ /^\/\//; ++i)
        print substr(lines[i], 4)
    print "*/"
}

# [`00-taste`](00-taste.cpp) becomes [00-taste](@ref 00-taste.cpp); what is no program becomes its words.
function linked(line,   name, path)
{
    while (match(line, /\[`[^`]*`\]\([^)]*\)/)) {
        name = substr(line, RSTART + 2, index(substr(line, RSTART + 2), "`") - 1)
        path = substr(line, RSTART + length(name) + 5, RLENGTH - length(name) - 6)
        line = substr(line, 1, RSTART - 1) (path ~ /\.cpp$/ ? "[" name "](@ref " path ")" : "`" name "`") substr(line, RSTART + RLENGTH)
    }
    return line
}
