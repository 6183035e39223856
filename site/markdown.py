"""Markdown to HTML by cmark-gfm, with addresses for headings and links that hold in the site."""
import html
import re
import subprocess


def anchor(text):
    """As the usual viewers of Markdown make it, so that one link works in both."""
    text = html.unescape(re.sub(r"<[^>]+>", "", text)).strip().lower()
    return re.sub(r"[^\w\- ]", "", text).replace(" ", "-")


def to_html(text, link):
    """(title, HTML). link(address) gives the address in the site, or None for what the site does not have."""
    page = subprocess.run(
        ["cmark-gfm", "--extension", "table", "--extension", "autolink", "--to", "html"],
        input=text,
        capture_output=True,
        text=True,
        check=True,
    ).stdout
    title = html.unescape(re.sub(r"<[^>]+>", "", re.search(r"<h1>(.*?)</h1>", page, re.S)[1]))
    taken = {}

    def heading(match):
        name = anchor(match[2])
        taken[name] = taken.get(name, -1) + 1
        return f'<h{match[1]} id="{name}{f"-{taken[name]}" if taken[name] else ""}">{match[2]}</h{match[1]}>'

    def linked(match):
        address = link(html.unescape(match[1]))
        return f'<a href="{html.escape(address)}">{match[2]}</a>' if address else match[2]

    page = re.sub(r"<h([1-6])>(.*?)</h\1>", heading, page, flags=re.S)
    page = re.sub(r'<a href="([^"]*)">(.*?)</a>', linked, page, flags=re.S)
    page = re.sub(r'<p>(<img src="[^"]*\.svg"[^>]*>)</p>', r'<div class="wide" tabindex="0">\1</div>', page)
    page = re.sub(r"<(table|pre)>", r'<div class="wide" tabindex="0"><\1>', page)
    return title, re.sub(r"</(table|pre)>", r"</\1></div>", page)
