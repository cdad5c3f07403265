# A header as the documentation site reads it; line numbers stay.
#
# - Headers that only serve other headers' insides, or sources, give nothing. A header that stays out of the umbrella headers is one of
#   them unless it speaks of including it.
# - So do namespaces called detail, but for classes that say that their public members are those of what derives from them.
# - The inline namespace and the export attribute go away.
# - What is written `= default` or `= delete` without a comment goes away: the words say it all.
# - A comment counts for all functions and aliases below it, up to the next blank line, comment or variable: they become a group.
# - Names that mean the same wherever they stand, and what deals in types that are not public, get their sentence here, where no comment
#   says more.

BEGIN {
    dropped = " " # not blank: blank lines end groups

    say("using (value_type|size_type|difference_type|(const_)?reference|pointer|(const_)?iterator|iterator_(category|concept)) =",
        "What algorithms of the standard library ask a range for.")
    say("(std::size_t|size_type|bool|auto|(const_)?iterator) (begin|end|size|empty)\\(\\) const", "What algorithms of the standard library ask a range for.")
    say("[A-Z][A-Za-z]*& operator=\\((const )?[A-Z][A-Za-z]*&&?",
        "What a copy shares, and what is left where it was moved from, says the class.")
    say("void (clear|removeAll)\\(\\)", "Leaves nothing in it.")
    say("void reserve\\(std::size_t", "Makes room for so many in all, so that adding them does not move what is there.")
    say("(virtual )?~", "What ends with the object says the class.")
    say("bool operator==\\(", "Whether both are the same value, in the sense of the class's comment.")
    say("std::size_t hash\\(\\) const", "What std::hash gives; equal values have equal hashes.")
    say("(const )?std::string&? description\\(\\) const", "The printed form that describe() gives.")
    say("(const )?std::string&? debugDescription\\(\\) const", "The printed form that debugDescribe() gives.")
    say("std::string_view printedTypeName", "The name of the type that typeName() gives.")
    say("[A-Za-z_:<>]+ decode\\(const Decoder& decoder\\)", "Reads a value, or throws a DecodingError; see Decodable.")
    say("void write\\([A-Za-z_:& ]+, const detail::EncodingPlace& place\\)", "Writes a value, or throws an EncodingError; see Encodable.")
    say("void reflect\\(const [A-Za-z]+& value, Mirror& mirror\\)", "Adds the children of a value to the mirror; see Mirror.")
    say("using (Output|Failure) =", "What a stream of this type carries: its values, and what it fails with.")
    say("using Payload =", "One value or one failure of the stream.")
    say("using RawValue =", "What a value is stored and sent as.")
    say("(std::string errorDomain|std::int64_t errorCode|Dictionary errorUserInfo)\\(",
        "One of the three by which CustomNSError knows how an error looks as a platform error object.")
    say("(template <.*> )?struct [A-Z][A-Za-z]*<.*> {$", "What the template of this name is for these types.")
    say("[^{]*detail::", "For the library's own use: it deals in types that are not public.")
}

{ lines[NR] = $0 }

END {
    if (staysInside())
        exit
    for (i = 1; i <= NR; ++i)
        lines[i] = plain(lines[i])
    dropDetail()
    for (i = 1; i <= NR; ++i)
        if (lines[i] ~ /= (default|delete);/ && !isComment(lines[i - 1]))
            dropStatement(i)
    for (i = 1; i <= NR; ++i)
        if (isComment(lines[i]) && !isComment(lines[i - 1]))
            group(i)
    for (i = 1; i <= NR; ++i)
        if (body == "" && lines[i] ~ /^ *{$/)
            body = "^" substr(lines[i], 1, indent(lines[i])) "}"
        else if (body != "" && lines[i] ~ body)
            body = ""
        else if (body == "")
            comment(i)
    for (i = 1; i <= NR; ++i)
        print prefix[i] lines[i]
}

function staysInside(   i, head)
{
    for (i = 1; i <= 3 || (i <= NR && lines[i] != ""); ++i)
        head = head " " lines[i]
    return head ~ /Not in the umbrella/ && head !~ /includ/
}

function plain(line)
{
    sub(/^namespace orrenby::inline ORRENBY_ABI/, "namespace orrenby", line)
    if (line !~ /^#/)
        sub(/ORRENBY_EXPORT /, "", line)
    sub(/struct fmt::/, "struct ", line)
    return line
}

# The statement that ends on a line; it may have begun above it, and stays if a comment is above that.
function dropStatement(end,   first)
{
    for (first = end; indent(lines[first - 1]) < indent(lines[first]) || lines[first - 1] ~ /^ *(template|requires)/; --first)
        if (lines[first - 1] == "" || lines[first - 1] ~ /[:;{}]$/)
            break
    if (isComment(lines[first - 1]))
        return
    for (; first <= end; ++first)
        lines[first] = dropped
}

# Empties the namespaces called detail, but for the classes whose public members are those of what derives from them.
function dropDetail(   i, depth, kept, wasOpen)
{
    for (i = 1; i <= NR; ++i) {
        if (depth == 0) {
            if (lines[i] ~ /^namespace (.*::)?detail {$/)
                depth = 1
            continue
        }
        if (depth == 1 && !kept && isComment(lines[i]) && speaksOfHeirs(i)) {
            kept = 1
            wasOpen = 0
        }
        depth += braces(lines[i])
        if (depth == 0)
            continue
        wasOpen = wasOpen || depth > 1
        if (!kept)
            lines[i] = dropped
        else if (wasOpen && depth == 1)
            kept = 0
    }
}

function speaksOfHeirs(i,   text)
{
    for (; isComment(lines[i]); ++i)
        text = text " " substr(lines[i], 4)
    return text ~ /those +of +what +derives +from +it/
}

# How many more braces a line opens than it closes.
function braces(line)
{
    gsub(/"([^"\\]|\\.)*"|'([^'\\]|\\.)'/, "", line)
    sub(/\/\/.*/, "", line)
    return gsub(/{/, "", line) - gsub(/}/, "", line)
}

function isComment(line) { return line ~ /^ *\/\/\// }

function indent(line) { match(line, /^ */); return RLENGTH }

# The sentence for a line whose words mean the same wherever they stand; nothing for other lines.
function common(line,   i)
{
    if (isCopy(line))
        return "What a copy shares, and what is left where it was moved from, says the class."
    for (i = 1; i <= sentences; ++i)
        if (line ~ pattern[i] && (i < sentences || line !~ /^ *(using|template|requires|class|struct|concept|return|namespace) /))
            return sentence[i]
    return ""
}

# Puts the sentence for a declaration that begins on this line above it, if it has no comment of its own.
function comment(i,   text)
{
    text = common(lines[i])
    while (lines[i - 1] ~ /^ *(template|requires)/ && lines[i - 1] !~ /[;{]$/)
        --i
    if (text != "" && lines[i - 1] ~ /^ ?$|[;{}:]$|^ *#|\/\// && !isComment(lines[i - 1]))
        prefix[i] = prefix[i] "/** " text " */ "
}

function say(regexp, text)
{
    pattern[++sentences] = "^ *(constexpr |static |friend |inline |ORRENBY_EXPORT )*" regexp
    sentence[sentences] = text
}

# A constructor whose one argument is of its own class.
function isCopy(line,   words)
{
    if (!match(line, /^ *(constexpr )?[A-Z][A-Za-z]*\((const )?[A-Z][A-Za-z]*&&?( other)?\)/))
        return 0
    line = substr(line, RSTART, RLENGTH)
    gsub(/constexpr|const| other|[&()]/, " ", line)
    split(line, words, " ")
    return words[1] == words[2]
}

function isVariable(line) { return line ~ /;/ && line !~ /^ *(template <.*> )?using / && (line !~ /\(/ || line ~ /^[^(]*(=|\/\/)/) && line !~ /operator/ }

function firstParagraph(i,   text, line)
{
    for (; isComment(lines[i]); ++i) {
        line = lines[i]
        sub(/^ *\/\/\/ ?/, "", line)
        if (line == "" || line ~ /^@/)
            break
        text = text line " "
    }
    return text
}

# From the first line of a comment: a group, if more than one declaration follows. Friends, overriding functions and alias templates
# do not get the comment of their group from Doxygen, therefore its first paragraph is repeated.
function group(first,   k, i, start, count, inside, last)
{
    k = indent(lines[first])
    for (start = first; isComment(lines[start]); ++start) { }
    for (i = start; lines[i] ~ /^ *(template|requires)/ && lines[i] !~ /[;}]$/; ++i) { }
    if (lines[i] ~ /^ *(class|struct|enum|union|namespace|concept|extern|#|$)/ || lines[start] ~ /> (class|struct|concept|union) /)
        return
    count = 1
    last = start
    for (i = start + 1; i <= NR; ++i) {
        if (inside) {
            if (indent(lines[i]) == k && lines[i] ~ /^ *}/)
                inside = 0
        } else if (lines[i] == "" || indent(lines[i]) < k || isComment(lines[i]) || lines[i] ~ /^ *(\/\/|class|struct|enum|namespace|#|})/)
            break
        else if (indent(lines[i]) == k && lines[i] ~ /^ *{$/)
            inside = 1
        else if (indent(lines[i]) == k && lines[last] ~ /[;}]( *\/\/.*)?$/) {
            if (isVariable(lines[i]))
                break
            ++count
            if (lines[i] ~ /^ *friend | override|> using /)
                repeated[i] = 1
        }
        if (lines[i] != "")
            last = i
    }
    if (count < 2)
        return
    for (last = first; last < i; ++last) {
        inGroup[last] = 1
        if (last in repeated)
            prefix[last] = "/** " firstParagraph(first) " */ "
    }
    prefix[first] = prefix[first] "/** @{ */ "
    prefix[i] = prefix[i] "/** @} */ "
}
