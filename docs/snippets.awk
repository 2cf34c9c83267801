# A program's snippets at the left margin: what stands between two marks loses the marks' own indentation.
/\/\/! \[/ {
    indent = inside ? 0 : match($0, /\//) - 1
    inside = !inside
    sub(/^ +/, "")
    print
    next
}
{ print inside && substr($0, 1, indent) ~ /^ *$/ ? substr($0, indent + 1) : $0 }
