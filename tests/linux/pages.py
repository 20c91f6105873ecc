"""pages.py NAME [PICTURES]: looks at the pages in the working directory; hostile.html is that of the
signal NAME, whose sample i stands at i - 2 s."""
import os
import re
import sys

from browser import Browser

name = sys.argv[1]
pictures = sys.argv[2] if len(sys.argv) > 2 else None
titles = {
    "en": "Deconvolution of xrf-spectrum.csv by xrf-zero-peak.csv",
    "de": "Entfaltung von xrf-spectrum.csv mit xrf-zero-peak.csv",
    "fr": "D\u00e9convolution de xrf-spectrum.csv par xrf-zero-peak.csv",
    "compare": "Methods compared: xrf-spectrum.csv, deconvolved by xrf-zero-peak.csv",
    "sweep": "Exponential sweep sweep.wav",
    "room": "Deconvolution of recorded.wav by sweep.wav",
    "hostile": f"Deconvolution of {name} by impulse.txt",
}
wide, phone = 1280, 360


def require(holds, *what):
    if not holds:
        raise SystemExit(f"does not hold: {what}")


def keep(page):
    if pictures:
        browser.picture(os.path.join(pictures, page + ".png"))


def loads_nothing(file):
    return browser.requests == ["file://" + os.path.abspath(file)]


def fits():
    return browser.ask("document.documentElement.scrollWidth <= innerWidth")


def is_text_alone():
    return browser.ask("document.querySelectorAll('img, iframe, object, link, a, [onload], [onerror]').length") == 0


def readout():
    return browser.ask("document.getElementById('readout').hidden ? null :"
                       " document.getElementById('readout').innerText")


def middle_of_pane(pane, share=0.5):
    """A point in a pane, in pixels of the window."""
    return browser.ask(f"""(() => {{
        const frame = JSON.parse(document.getElementById('numbers').textContent)[{pane}].frame;
        const matrix = document.querySelector('#picture svg').getScreenCTM();
        return [(frame[0] + {share} * frame[2]) * matrix.a + matrix.e,
                (frame[1] + frame[3] / 2) * matrix.d + matrix.f]; }})()""")


def check_the_checks():
    browser.open("bad.html", phone)
    require(not loads_nothing("bad.html"), "a request is seen")
    require(browser.complaints, "complaints are seen")
    require(not fits(), "what is too wide is seen")
    require(not is_text_alone(), "an image is seen")
    require(browser.ask("document.title") == "owned", "a script is seen")


def check_page(page):
    file = page + ".html"
    for width, scheme in ((wide, "light"), (wide, "dark"), (phone, "light")):
        browser.open(file, width, scheme=scheme)
        require(loads_nothing(file), page, browser.requests)
        require(not browser.complaints, page, browser.complaints)
        require(browser.ask("document.title") == titles[page], browser.ask("document.title"))
        require(is_text_alone() and browser.ask("document.scripts.length") == 2, page)
        require(fits(), page, "is as wide as the window", width)
        colour = browser.ask("getComputedStyle(document.body).backgroundColor")
        dark = int(re.search(r"\d+", colour)[0]) < 128
        require(dark == (scheme == "dark"), page, scheme, colour)
        keep(f"{page}-{width}-{scheme}")


def check_without_scripts(page):
    browser.open(page + ".html", scripts=False)
    text = browser.ask("document.body.innerText")
    require("fendra deconvolve" in text and "SHA-256" in text, text)
    require(browser.ask("document.getElementById('hint').hidden"), "no word of what does not work")
    require(browser.ask("document.querySelector('#picture svg').getBoundingClientRect().width") > 600)


# A4 is 210 by 297 mm; a point is 1/72 inch. Between the margins of 15 mm it takes 680 by 1009 pixels.
def check_print(page):
    browser.open(page + ".html", 680, media="print")
    require(fits(), page, "is as wide as the paper")
    height = browser.ask("document.querySelector('.pictures').getBoundingClientRect().height")
    require(0 < height < 1009, page, "the pictures take one side", height)
    browser.open(page + ".html", scheme="dark")
    paper = browser.printed()
    if pictures:
        with open(os.path.join(pictures, page + ".pdf"), "wb") as stream:
            stream.write(paper)
    boxes = re.findall(rb"/MediaBox *\[0 0 ([\d.]+) ([\d.]+)\]", paper)
    require(1 <= len(boxes) <= 5, page, boxes)
    for box in boxes:
        size = [float(points) / 72 * 25.4 for points in box]
        require(abs(size[0] - 210) < 1 and abs(size[1] - 297) < 1, page, "is on A4", size)


def check_pointer():
    browser.open("hostile.html", wide, 1200)
    require(readout() is None, readout())
    browser.point(*middle_of_pane(0))
    shown = readout()
    seconds = int(re.match(r".*: (-?\d+)\n", shown)[1])
    value = 7 * (seconds + 2) ** 2 % 101 + 0.25
    # The kernel is one: the result is the signal.
    require(f"\n{name}: {value:g}\n" in shown + "\n", shown, value)
    require(shown.count(f": {value:g}") == 2, shown, value)
    require(abs(seconds - 29) < 3, "the middle of -2 s to 61 s", seconds)
    keep("pointed")
    browser.point(5, 5)
    require(readout() is None, readout())
    for share in (0.05, 0.2, 0.4):  # of a picture that is wider than the window
        browser.open("hostile.html", phone, 1200)
        browser.point(*middle_of_pane(0, share))
        left, right = browser.ask("""(() => { const box = document.getElementById('readout')
            .getBoundingClientRect(); return [box.left, box.right]; })()""")
        require(0 <= left < right <= phone, "values are seen on a phone", share, left, right)


def check_keys():
    browser.open("hostile.html", wide, 1200)
    browser.press("Tab")
    require(browser.ask("document.activeElement.id") == "picture")

    def second():
        return int(re.match(r".*: (-?\d+)\n", readout())[1])

    browser.press("ArrowRight")
    start = second()
    for key, shift, place in (("ArrowRight", False, start + 1), ("ArrowRight", True, start + 11),
                              ("ArrowLeft", False, start + 10)):
        browser.press(key, shift)
        require(second() == place, key, shift, readout())
    browser.press("ArrowLeft", True)
    for _ in range(9):
        browser.press("ArrowLeft", True)
    require(second() == -2, "not beyond the first sample", readout())
    for _ in range(9):
        browser.press("ArrowDown")
    last = readout()
    browser.press("ArrowUp")
    require(last and readout() != last, "another pane", last)
    browser.press("Escape")
    require(readout() is None)


# Long signals are shown by extremes: of a sweep, about -1 to 1.
def check_extremes():
    browser.open("sweep.html", wide, 1200)
    browser.point(*middle_of_pane(0, 0.9))
    low, high = re.search(r": (\S+) \u2026 (\S+)$", readout(), re.M).groups()
    require(-1 <= float(low) < -0.9 and 0.9 < float(high) <= 1, readout())
    require(os.path.getsize("sweep.html") < 1_500_000, os.path.getsize("sweep.html"))


browser = Browser("chromium")
try:
    check_the_checks()
    for each in titles:
        check_page(each)
        check_print(each)
    check_without_scripts("de")
    check_pointer()
    check_keys()
    check_extremes()
finally:
    browser.close()
