# What Doxygen sees of a header.
#
# The prose that opens a header describes its first class that has no description of its own; where there is none, it
# describes the file. A header that calls itself a private part of another is left out. The comment behind a field
# describes the field. Members that every container of the standard library has too are described here, so that the
# headers need not. Characters that Doxygen would take for markup are escaped, and what is said to be required becomes
# a precondition.

function text(s) {
    gsub(/[<>%]/, "\\\\&", s)
    gsub(/Requires /, "\\pre ", s)
    return s
}

# A line of prose: numbered items become a list, indented lines stay an example.
function prose(s) {
    if (match(s, /^   \([0-9]\) /)) {
        inList = 1
        return " " substr(s, 5, 1) ". " text(substr(s, RLENGTH + 1))
    }
    if (inList && s ~ /^       /) return "    " text(substr(s, 8))
    inList = 0
    return s ~ /^     / ? s : text(s)
}

function isUndescribedClass(i) {
    if (line[i - 1] ~ /^\/\/\//) return 0
    if (line[i] ~ /^template </) return line[i + 1] ~ /^class /
    return line[i] ~ /^class / && line[i] !~ /;$/ && line[i - 1] !~ /^template </
}

function printProse(i, last) {
    for (i = 1; i <= last; ++i) print "///" prose(substr(line[i], 3))
}

# A declaration without the line that makes a template of it.
function undecorated(i) { return line[line[i] ~ /^ *template </ ? i + 1 : i] }

# The description of a member that has none, as far as its name says it all.
function usual(s) {
    if (s ~ /^    using (value_type|size_type|difference_type|reference|const_reference|pointer|iterator_category) = /)
        return "For generic code, as in the standard containers."
    if (s ~ /^    using (const_)?iterator = /) return "What a range is walked with; the cursor has no part in it."
    if (s ~ /^    reference operator\*/) return "The element."
    if (s ~ /^    pointer operator->/) return "The element's address."
    if (s ~ /^    [A-Za-z]+Iterator&? operator\+\+/) return "One step on."
    if (s ~ /^    [A-Za-z]+Iterator&? operator--/) return "One step back."
    if (s ~ /^    friend bool operator==/) return "Whether both stand at one element."
    if (s ~ /^    friend bool operator!=/) return "Whether they stand at different elements."
    if (s ~ /^[A-Za-z].* operator([<>]|[<>=!]=)\(const A& a, const B& b\)/) return "Whether the two compare so."
    if (s ~ /& operator<<\((char|bool|short|long|double) /) return "Calls the typed write of its type."
    if (s ~ /& operator>>\((char|bool|short|long|double)& /) return "Calls the typed read of its type."
    if (s ~ /^    (const_)?iterator begin\(\)/) return "The first element, or end() when there is none."
    if (s ~ /^    (const_)?iterator end\(\)/) return "Behind the last element."
    if (s ~ /^    long GetLength\(\) const/) return "The number of elements."
    if (s ~ /^    T\* Get(First|Next|Pre|Last|At)\(.*\) const override/) {
        sub(/^    T\* /, "", s)
        sub(/\(.*/, "", s)
        return "\\copydoc KyDynArrayBase::" s
    }
    if (s ~ /^    [^~]*\) (const )?override/ && s !~ /GetCI/) return "As in the base class."
    return ""
}

{ line[NR] = $0 }

END {
    for (nProse = 0; line[nProse + 1] ~ /^\/\/($| )/; ++nProse) {}
    for (nClass = nProse + 1; nClass <= NR && !isUndescribedClass(nClass); ++nClass) {}

    for (i = 1; i <= nProse; ++i) {
        if (line[i] ~ /[Pp]rivate part of/) exit
    }
    print "/// \\file"
    if (nClass > NR) {
        printProse(1, nProse)
    } else {
        for (i = 1; i <= nProse && line[i] != "//"; ++i) {
            sentence = substr(line[i], 4)
            end = match(sentence, /\.( |$)/)
            print "/// " text(end ? substr(sentence, 1, end) : sentence)
            if (end) break
        }
    }
    for (i = nProse + 1; i <= NR; ++i) {
        s = line[i]
        if (i == nClass) printProse(1, nProse)
        if (line[i - 1] !~ /^ *(\/\/\/|template )/ && usual(undecorated(i)) != "") print "/// " usual(undecorated(i))
        if (s == "template <>" && line[i + 1] ~ /^struct std::/) {
            # Doxygen does not know a class of this kind.
            print "/// \\cond"
            isHidden = 1
        }
        if (s ~ /^ *\/\/\/ O\(/ && line[i - 1] !~ /\/\/\//) sub(/\/\/\/ /, "/// As in the base class. ", s)
        if (s ~ /^ *\/\/\/ /) {
            at = index(s, "/// ") + 3
            s = substr(s, 1, at) text(substr(s, at + 1))
        } else if (match(s, /; +\/\/ /) && s ~ /^    / && s !~ /NOLINT/) {
            s = substr(s, 1, RSTART) "  ///< " text(substr(s, RSTART + RLENGTH))
        }
        if (s ~ /^[a-z]+:$/) isPrivate = s == "private:"
        if (s == "};") isPrivate = 0
        if (isPrivate && s ~ /^    (struct|class) .*{$/) {
            # Doxygen would link to a list of classes that it does not make.
            print "/// \\cond"
            isHidden = 1
        }
        print s
        if (isHidden && s ~ /^(    )?};$/) {
            print "/// \\endcond"
            isHidden = 0
        }
    }
}
