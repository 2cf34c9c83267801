"""Follows every link inside the built guide, those of the search included; says which lead nowhere.

    python3 docs/links.py build/docs
"""

import html.parser
import pathlib
import re
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors = set()
        self.links = set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("id", "name"):
                self.anchors.add(value)
            elif name in ("href", "src", "data") and value:
                self.links.add(value)


def links_of_search(path):
    return set(re.findall(r"'(\.\./[^']+)'", path.read_text(encoding="utf-8")))


def leads_nowhere(root, pages, origin, link):
    """Whether a link inside the guide names a file or a place in a page that is not there."""
    parts = urllib.parse.urlsplit(link)
    if parts.scheme or parts.netloc:
        return False
    target = (origin.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else origin
    if not target.exists():
        return True
    return bool(parts.fragment) and target in pages and urllib.parse.unquote(parts.fragment) not in pages[target].anchors


def main(folder):
    root = pathlib.Path(folder).resolve()
    pages = {path: Page(path) for path in root.rglob("*.html")}
    links = {path: page.links for path, page in pages.items()}
    links.update((path, links_of_search(path)) for path in (root / "search").glob("*_*.js"))
    broken = [
        f"{origin.relative_to(root)}: {link}"
        for origin, found in sorted(links.items())
        for link in sorted(found)
        if leads_nowhere(root, pages, origin, link)
    ]
    for line in broken:
        print(line)
    print(f"{sum(map(len, links.values()))} links, {len(broken)} of them lead nowhere")
    searched = set().union(*(found for path, found in links.items() if path.suffix == ".js"))
    if not any("classKyDList.html" in link for link in searched):
        sys.exit("the search finds no class")
    sys.exit(1 if broken else 0)


if __name__ == "__main__":
    main(sys.argv[1])
