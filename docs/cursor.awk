# Draws the table that the program `cursor` prints: a row of boxes a container, the current element filled.

function code(s) {
    gsub(/&/, "\\&amp;", s)
    gsub(/</, "\\&lt;", s)
    return s
}

# "A [B] C (1)" as boxes, and the index behind them.
function boxes(s, kind,    n, i, part, html, index_) {
    if (s == "") return ""
    n = split(s, part, " ")
    html = "<span class=\"row\" data-kind=\"" kind "\">"
    for (i = 1; i < n; ++i) {
        if (part[i] == "[]")
            html = html "<i class=\"none\"></i>"
        else if (part[i] ~ /^\[/)
            html = html "<i class=\"current\">" substr(part[i], 2, 1) "</i>"
        else
            html = html "<i>" part[i] "</i>"
    }
    index_ = part[n]
    gsub(/[()]/, "", index_)
    sub(/^-/, "\\&minus;", index_)
    return html "<small>" index_ "</small></span>"
}

function column(from, width,    s) {
    s = substr($0, from, width)
    sub(/ +$/, "", s)
    return s
}

function close_table() {
    if (open) print "</div>"
    open = 0
}

/^-+$/ { next }
/^$/ { next }
/array +list$/ {
    close_table()
    open = 1
    heading = column(1, 20)
    print "<div class=\"cursor\"><b>" heading "</b><b>array</b><b>list</b>"
    next
}
{
    name = column(1, 20)
    step = sub(/^ +/, "", name) ? "then " : ""
    at = ""
    if (match(name, /^[A-Z]: /)) {
        at = "on " substr(name, 1, 1) ", "
        name = substr(name, 4)
    }
    print "<span class=\"name\">" at step "<code>" code(name) "</code></span>" \
        (column(21, 20) == "" ? "<span></span>" : boxes(column(21, 20), "array")) boxes(column(41, 20), "list")
}
END { close_table() }
