#!/usr/bin/env python3
"""benchmarks/picture.py < docs/benchmarks.md > docs/speed.svg: a bar for each kind of work and processor.

The bar is the geometric mean, over the sizes of a table, of how many times as fast as the fastest other
library the project is; the thin line runs from the least to the greatest.
"""
import math
import re
import sys

WORK = {
    "convolution": "convolution, time domain",
    "radix2": "Fourier transform, 2^n",
    "planned": "the same, other lengths, plan kept",
    "hartley": "Hartley transform",
    "product": "product of matrices",
    "lu": "elimination with pivots",
    "svd": "singular values",
}
OWN = ("plain loop", "contracted")  # not other libraries
LEAST, GREATEST = 0.25, 8.0
LEFT, WIDTH, TOP, BAR, GAP = 270, 420, 56, 13, 12


def rows_of(lines):
    """The ratios in a table, row by row, as {rival: ratio}. Columns end where their names end."""
    names = []
    for line in lines:
        if "allocates" in line:
            names = [(m.group(), m.end()) for m in re.finditer(r"\S+(?: \S+)*", line)]
        elif names and line.strip():
            entries = {m.end(): m.group() for m in re.finditer(r"\*?[\d.]+(?:\(\d+\))?", line)}
            yield {name: float(re.sub(r"\*|\(.*", "", entries[end]))
                   for name, end in names[5:] if end in entries}


def tables_of(text):
    """(processor, {work: ratios against the fastest library}) for each block of tables."""
    for title, block in re.findall(r"^## ([^\n]*)\n(?:(?!^## ).)*?^```\n(.*?)^```", text, re.M | re.S):
        ratios = {}
        for name, body in re.findall(r"^([\w-]+): [^\n]*\n(.*?)(?:\n\n|\Z)", block, re.M | re.S):
            fastest = [min(value for rival, value in row.items() if rival not in OWN)
                       for row in rows_of(body.splitlines()) if set(row) - set(OWN)]
            if name in WORK and fastest:
                ratios[name] = fastest
        if ratios:
            yield title, ratios


def x_of(ratio):
    clipped = min(max(ratio, LEAST), GREATEST)
    return LEFT + WIDTH * math.log(clipped / LEAST) / math.log(GREATEST / LEAST)


def main():
    processors = list(tables_of(sys.stdin.read()))
    works = [work for work in WORK if any(work in ratios for _, ratios in processors)]
    step = BAR * len(processors) + GAP
    bottom = TOP + step * len(works)
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {LEFT + WIDTH + 60} {bottom + 34}" '
           'font-family="sans-serif" font-size="13">',
           "<style>.ground{fill:#fff}text{fill:#444}.grid{stroke:#ddd}.even{stroke:#666}.span{stroke:#222}"
           ".p0{fill:#1f5a96}.p1{fill:#b5482a}.p2{fill:#5a8f3c}"
           "@media(prefers-color-scheme:dark){.ground{fill:#0d1117}text{fill:#c9d1d9}.grid{stroke:#30363d}"
           ".even{stroke:#8b949e}.span{stroke:#e6edf3}.p0{fill:#5b9bd5}.p1{fill:#e0805f}.p2{fill:#8cc56b}}"
           "</style>", '<rect class="ground" width="100%" height="100%"/>']
    for number, (title, _) in enumerate(processors):
        x = 16 + 330 * number
        out.append(f'<rect class="p{number}" x="{x}" y="14" width="12" height="12"/>'
                   f'<text x="{x + 18}" y="25">{title}</text>')
    for ratio in (0.25, 0.5, 1, 2, 4, 8):
        kind = "even" if ratio == 1 else "grid"
        out.append(f'<line class="{kind}" x1="{x_of(ratio):.1f}" x2="{x_of(ratio):.1f}" y1="{TOP - 10}" y2="{bottom}"/>'
                   f'<text x="{x_of(ratio):.1f}" y="{bottom + 16}" text-anchor="middle">{ratio:g}</text>')
    for place, work in enumerate(works):
        y = TOP + step * place
        out.append(f'<text x="{LEFT - 10}" y="{y + BAR * len(processors) / 2 + 4:.1f}" text-anchor="end">{WORK[work]}</text>')
        for number, (_, ratios) in enumerate(processors):
            if work not in ratios:
                continue
            found = ratios[work]
            mean = math.exp(sum(map(math.log, found)) / len(found))
            begin, end = sorted((x_of(1), x_of(mean)))
            middle = y + BAR * (number + 0.5)
            out.append(f'<rect class="p{number}" x="{begin:.1f}" y="{y + BAR * number + 1}" '
                       f'width="{end - begin:.1f}" height="{BAR - 2}"/>'
                       f'<line class="span" x1="{x_of(min(found)):.1f}" x2="{x_of(max(found)):.1f}" y1="{middle}" y2="{middle}"/>')
    out.append(f'<text x="{LEFT + WIDTH / 2}" y="{bottom + 30}" text-anchor="middle">'
               "times as fast as the fastest other library</text></svg>")
    print("\n".join(out))


main()
