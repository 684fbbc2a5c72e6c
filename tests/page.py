#!/usr/bin/python3
"""page.py PROGRAM: has it make the page of a theme, and uses the page in a browser with mouse, fingers, keys and a clock."""
import base64
import os
import subprocess
import sys
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

WIDTH, HEIGHT = 320, 240
# How the menu ends at a missing skin and at a PGM, by the DirectFB that the program links.
DIRECTFB2 = b"libdirectfb-2" in subprocess.check_output(["ldd", sys.argv[1]])
ABSENT, GREY = ("exit status 182", "exit status 185") if DIRECTFB2 else ("exit status 169", "signal 11")
LONG_PRESS = ["9:0:0:1:1", "1:0:0:1:1"]
# The first two overlap, the third's code needs more than 8 bits, the fourth is a point, the next two cannot be touched,
# since one wraps around and the other is off the screen, and the last is too wide to be drawn.
PUSH = ["3:37:61:101:50", "2:100:80:60:40", "260:240:10:60:40", "5:5:5:0:0", "7:10:0:4294967290:50", "8:400:0:0:9",
        "11:310:200:2147483648:9"]
LABELS = ["Screen of the menu menu.conf, 320 by 240 pixels", "Button with code 3, at 37, 61, 101 by 50",
          "Button with code 2, at 100, 80, 60 by 40", "Button with code 260, at 240, 10, 60 by 40",
          "Button with code 5, at 5, 5, 0 by 0", "Button with code 11, at 310, 200, 2147483648 by 9"]

# What is done and what is seen. "shows" lists what was copied onto the normal skin, in order: a code with + from the
# pressed skin, with - from the normal one. Nothing is loaded anew between stories.
STORIES = """
a touch to the far edges: down 138 61, shows 3+, move 60 111, shows 3+, up, shows, exit status 3
a touch on the near corner: down 37 61, shows 3+, up, exit status 3
a touch beyond the right edge: down 139 61, shows, up, nothing fired
a touch beyond the upper edge: down 37 60, shows, up, nothing fired
a touch beyond the lower edge: down 60 112, shows, up, nothing fired
slid out and back: down 40 70, shows 3+, move 36 70, shows, move 40 70, shows, up, shows, nothing fired
slid in: down 139 61, move 138 61, shows, up, nothing fired
slid off the screen: down 260 20, shows 260+, move 260 -20, shows, up, nothing fired
a code of more than 8 bits: down 260 20, shows 260+, up, exit status 4, only the low 8 bits
a point: down 5 5, shows, up, exit status 5
beside the point: down 6 5, up, nothing fired
a rectangle that wraps around: down 50 10, shows, up, nothing fired
a rectangle too wide to be drawn: down 315 205, shows, up, exit status 11
beyond the screen with it: down 315 205, move 330 205, up, nothing fired
the overlap: down 110 100, shows 3+ 2+, up, exit status 3
out of one of the overlapping: down 110 100, shows 3+ 2+, move 110 120, shows 3+ 2+ 3-, up, exit status 2
too short by a nanosecond: at 1000, down 300 200, at 3999.999999, move 10 10, up, nothing fired, at 9000, down 300 200, up, nothing fired
three seconds: at 1000, down 300 200, at 4000, move 10 10, running, up, exit status 9, held for 3.0 s
long on a button: at 5000, down 40 70, shows 3+, at 9000, shows 3+, up, shows, exit status 9
short after long: at 9000, down 40 70, running, up, exit status 3
a finger: touch 40 70, shows 3+, drag 139 70, shows, lift, nothing fired
a finger fires: touch 40 70, shows 3+, lift, exit status 3
a second finger: touch 40 70, touch 260 20, shows 3+, lift 260 20, shows 3+, lift 40 70, exit status 3
the first finger leaves: touch 40 70, touch 260 20, lift 40 70, exit status 3, lift 260 20, exit status 3
one touch at a time: focus 3, touch 40 70, press Enter, shows 3+, release Enter, shows 3+, lift, exit status 3
a finger taken away: touch 40 70, shows 3+, cancel, shows, nothing fired
a finger taken away late: at 0, touch 40 70, shows 3+, at 4000, cancel, shows, exit status 9
a key: focus 1, press Enter, shows 3+, press Enter, shows 3+, release Enter, shows, exit status 3
an overlapped button: focus 2, press Space, shows 2+, release Space, exit status 2
a button that is partly on the screen: focus 5, press Enter, shows, release Enter, exit status 11
a key held: focus 1, at 0, press Space, at 3000, release Space, exit status 9
away with Escape: focus 1, press Enter, shows 3+, press Escape, shows, release Enter, nothing fired
away with Tab: focus 1, press Enter, shows 3+, press Tab, shows, nothing fired, repeat Enter, shows
a screen reader: focus 3, click, exit status 4
a key on the screen: focus 0, press ArrowUp, position x 160 y 119 on button 2, press Enter, shows 2+, release Enter, exit status 2
slid by keys: focus 0, press Enter, shows 2+, shift ArrowRight, shows, press ArrowLeft, release Enter, nothing fired
measured: shift 60 70, move 100 100, up 10 20, shows, button 6:10:20:50:50, marked 10 20 50 50, copy 6:10:20:50:50, down 300 200, marked, up
measured beyond the edge: shift 300 200, move 400 300, up, button 6:300:200:20:40
measured by keys: focus 0, shift ArrowRight, shift ArrowDown, button 6:160:119:1:1, release Shift, selected
pointed at: hover 110 100, position x 110 y 100 on button 3 and 2, hover 0 239, position x 0 y 239
codes: outline none, outline rgb(0 0 0)
"""
# What is changed in the theme, and what is seen. "stuck": a touch does nothing but have the outcome said again.
STARTS = [
    ("\n".join(f"button {entry}" for entry in PUSH[4:]), "", "a sound theme: running, errors 0, down 40 70, up, exit status 3"),
    ("button 5:5", "button 1:300:0:21:10 button 5:5", "over the right edge: exit status 176, button 1 is not wholly on the screen, stuck, shows"),
    ("button 5:5", "button 1:0:200:10:41 button 5:5", "over the lower edge: exit status 176, button 1 is not wholly on the screen"),
    ("button 5:5", "button 1:-5:9:10:10 button 5:5", "over the left edge: exit status 176, button 1 is not wholly on the screen, errors 3, stuck"),
    ("button 5:5", "button 1:9:-1:0:10 button 1:9:-1:10:10 button 5:5", "over the upper edge: exit status 176, button 1 is not wholly on the screen"),
    ("button 5:5", "button 1:-11:-9:0:10 button 5:5", "empty and beyond the edge: running"),
    ("/normal.", "/low.", "over the normal skin's edge: exit status 176, button 3 is not wholly on the normal skin"),
    ("/pressed.", "/narrow.", "over the pressed skin's right edge: running, errors 3, down 260 20, exit status 176, pressed skin, up,"
                              " exit status 176, down 5 5, up, exit status 5"),
    ("/pressed.", "/low.", "over the pressed skin's lower edge: down 260 20, exit status 176, pressed skin, up, down 5 5, up, exit status 5"),
    ("button 5:5", 'button "5</script><b>\\n" button 5:5',
     "a refused button: exit status 255, the theme has an error, errors 3, stuck, shows, error button 5</script><b>\\x0a\" is refused"),
    ("button 5:5", "button x button 1:-5:9:10:10 button 5:5", "refused before the edge: exit status 255, errors 4"),
    ("button 5:5", "button 1:-5:9:10:10 button x button 5:5", "over the edge before it is refused: exit status 176, errors 4"),
    ("button 1:0:0:1:1", "button 1:0:0:1", "a refused long press: exit status 255, error \"button 1:0:0:1\" is refused"),
    ("image {", "\ufeffimage {", "a byte order mark: exit status 255, errors 3, error byte order mark"),
    ("\nnormal ", "\nnormals ", "no normal path: exit status 255, errors 3, stuck"),
    ("\npressed ", "\nother ", "no pressed path: exit status 255, error there is no \"pressed\""),
    ("/normal.", "/absent.", f"an absent skin: {ABSENT}, stuck, error No such file"),
    ("/pressed.png", "/grey.pgm", f"a skin that may crash: {GREY}, stuck"),
    ("/pressed.", "/fifo.", "a pipe: hanging, error is a pipe"),
]
KEYS = {"Tab": 9, "Enter": 13, "Shift": 16, "Escape": 27, "Space": 32, "ArrowLeft": 37, "ArrowUp": 38, "ArrowRight": 39, "ArrowDown": 40}
TEXT = {"Enter": "\r", "Space": " "}


def convert(*arguments):
    return subprocess.run(["convert", *arguments], check=True, stdout=subprocess.PIPE).stdout


class Page:
    """The page of a theme in a browser."""

    def __init__(self, browser, folder):
        self.browser, self.folder, self.point = browser, folder, (0, 0)
        self.skins = [convert(f"{folder}/{skin}.png", "RGBA:-") for skin in ("normal", "pressed")]

    def load(self, program, changed=("", "")):
        theme, page = f"{self.folder}/menu.conf", f"{self.folder}/menu.html"
        sections = [f"{name} {{\n" + "".join(f"button {entry}\n" for entry in entries) + "}\n"
                    for name, entries in (("button_long_press", LONG_PRESS), ("button_normal", PUSH))]
        image = f'image {{\nnormal "{self.folder}/normal.png"\npressed "{self.folder}/pressed.png"\n}}\n'
        with open(theme, "w") as file:
            file.write((image + "".join(sections)).replace(*changed, 1))
        subprocess.run([program, "preview", theme, "--screen", f"{WIDTH}x{HEIGHT}", "--output", page], check=False, stderr=subprocess.DEVNULL)
        self.browser.get(f"file://{page}")
        self.until(lambda: self.script("return 'ready' in document.documentElement.dataset"), "the page does not come")
        self.script("window.clock = 0; performance.now = () => window.clock")

    def script(self, text):
        return self.browser.execute_script(text)

    def send(self, kind, **what):
        self.browser.execute_cdp_cmd(f"Input.dispatch{kind}Event", what)

    def until(self, true, complaint):
        end = time.monotonic() + 10
        while not true():
            assert time.monotonic() < end, complaint() if callable(complaint) else complaint
            time.sleep(0.01)

    def place(self, x, y):
        """Where that pixel of the screen is in the window."""
        box = self.script("return document.getElementById('screen').getBoundingClientRect().toJSON()")
        return {"x": box["left"] + (int(x) + 0.25) * box["width"] / WIDTH, "y": box["top"] + (int(y) + 0.25) * box["height"] / HEIGHT}

    def mouse(self, kind, x, y, buttons=1, modifiers=0):
        self.point = (x, y)
        self.send("Mouse", type=kind, button="left" if buttons else "none", buttons=buttons, clickCount=1, modifiers=modifiers, **self.place(x, y))

    def fingers(self, kind, *numbers):
        points = zip(numbers[::2], numbers[1::2])
        self.send("Touch", type=kind, touchPoints=[{**self.place(*point), "id": 10 if point[0] == "260" else 1} for point in points])

    def key(self, kind, name, modifiers=0, repeat=False):
        key = " " if name == "Space" else name
        text = {"text": TEXT[name]} if name in TEXT and kind == "keyDown" else {}
        self.send("Key", type=kind, key=key, code=name, windowsVirtualKeyCode=KEYS[name], modifiers=modifiers, autoRepeat=repeat, **text)

    def screen(self):
        return base64.b64decode(self.script(
            "const s = document.getElementById('screen'), d = s.getContext('2d').getImageData(0, 0, s.width, s.height).data;"
            "let text = ''; for (let i = 0; i < d.length; i += 8192) text += String.fromCharCode(...d.subarray(i, i + 8192));"
            "return btoa(text)"))

    def picture(self, copies):
        rectangles = {code: list(map(int, rest)) for code, *rest in (entry.split(":") for entry in PUSH)}
        picture = bytearray(self.skins[0])
        for copy in copies:
            x, y, width, height = rectangles[copy[:-1]]
            for row in range(y, y + height):
                part = slice(4 * (row * WIDTH + x), 4 * (row * WIDTH + x + width))
                picture[part] = self.skins[copy.endswith("+")][part]
        return bytes(picture)

    def focus(self, number):
        focused = "return document.activeElement.getAttribute('aria-label')"
        self.script("document.getElementById('screen').focus()")
        for index in range(int(number) + 1):
            self.key("rawKeyDown", "Tab") if index else None
            self.until(lambda: self.script(focused) == LABELS[index], lambda: f"the focus is on {self.script(focused)}")

    def sees(self, text):
        seen = "return ['outcome', 'detail', 'entry'].map(id => document.getElementById(id)).map(e => e.value || e.textContent).join(' ')"
        if text.startswith("exit status"):
            seen = "return document.getElementById('outcome').textContent"
            self.until(lambda: self.script(seen) == text, lambda: f"says: {self.script(seen)}")
        self.until(lambda: text in self.script(seen), lambda: f"says: {self.script(seen)}")

    def do(self, step):
        verb, *rest = step.split()
        if verb in ("down", "move", "up", "hover", "shift") and not (rest and rest[0] in KEYS):
            kind = {"down": "mousePressed", "shift": "mousePressed", "up": "mouseReleased"}.get(verb, "mouseMoved")
            self.mouse(kind, *(rest or self.point), buttons=0 if verb == "hover" else 1, modifiers=8 if verb == "shift" else 0)
        elif verb in ("touch", "drag", "lift", "cancel"):
            kind = {"touch": "touchStart", "drag": "touchMove", "cancel": "touchCancel"}.get(verb, "touchEnd")
            self.fingers(kind, *rest)
        elif verb in ("press", "repeat", "shift"):
            self.key("keyDown" if rest[0] in TEXT else "rawKeyDown", rest[0], 8 if verb == "shift" else 0, verb == "repeat")
        elif verb == "release":
            self.key("keyUp", rest[0])
        elif verb == "at":
            self.script(f"window.clock = {rest[0]}")
        elif verb == "focus":
            self.focus(rest[0])
        elif verb == "click":
            self.script("document.activeElement.click()")
        elif verb == "selected":
            self.until(lambda: self.script("return String(getSelection())") == "button 6:160:119:1:1", "the entry is not selected")
        elif verb == "copy":
            self.script("document.addEventListener('copy', () => window.copied = String(getSelection()), { once: true });"
                        "document.getElementById('copy').click()")
            self.until(lambda: self.script("return window.copied") == f"button {rest[0]}", "nothing is copied")
        elif verb == "marked":
            mark = self.script("return document.getElementById('measured').getBoundingClientRect().toJSON()")
            corner = self.place(*rest[:2]) if rest else {"x": 0, "y": 0}
            wanted = [round(corner["x"]), round(corner["y"]), *map(int, rest[2:] or (0, 0))]
            assert [round(mark[key]) for key in ("x", "y", "width", "height")] == wanted, f"the mark is at {mark}"
        elif verb == "stuck":
            outcome = "document.getElementById('outcome').textContent"
            said = self.script(f"const said = {outcome}; {outcome} = ''; return said")
            self.mouse("mousePressed", 40, 70)
            self.sees(said)
            self.mouse("mouseReleased", 40, 70)
            self.sees(said)
        elif verb in ("error", "errors"):
            lines = self.script("return [...document.querySelectorAll('[role=alert] :is(p, li)')].filter(e => e.offsetHeight).map(e => e.textContent)")
            # With the line above the list, if there is one.
            right = max(0, len(lines) - 1) == int(rest[0]) if verb == "errors" else any(" ".join(rest) in line for line in lines)
            assert right and lines != ["The theme has errors:"], f"errors: {lines}"
        elif verb == "outline":
            shadow = self.script("return getComputedStyle(document.querySelector('.stage button')).boxShadow")
            assert shadow.replace(",", "").startswith(" ".join(rest)), f"the outline is {shadow}"
            self.script("document.getElementById('outline').click()")
        elif verb == "position":
            self.until(lambda: self.script("return document.getElementById('position').textContent").replace(",", "") == " ".join(rest),
                       lambda: "position: " + self.script("return document.getElementById('position').textContent"))
        elif verb == "shows":
            self.until(lambda: self.screen() == self.picture(rest), "the screen shows something else")
        else:
            self.sees(step)

    def tell(self, stories):
        for story in filter(None, stories.split("\n")):
            name, steps = story.split(": ", 1)
            for step in steps.split(", "):
                try:
                    self.do(step)
                except AssertionError as error:
                    self.browser.save_screenshot("build/page-failure.png")
                    sys.exit(f"page: {name}: {step}: {error} (build/page-failure.png is what it looked like)")
            print(f"== {name}")


def start_browser(profile):
    options = webdriver.ChromeOptions()
    for argument in ("headless=new", "no-sandbox", "disable-gpu", "disable-quic", "no-first-run", "disable-background-networking",
                     "disable-component-update", "disable-sync", "window-size=1000,800", f"user-data-dir={profile}"):
        options.add_argument(f"--{argument}")
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


def main(program):
    with tempfile.TemporaryDirectory() as folder:
        for seed, skin in enumerate(("normal", "pressed")):
            convert("-size", f"{WIDTH}x{HEIGHT}", "-seed", str(seed), "plasma:", "-depth", "8", "-strip", f"PNG24:{folder}/{skin}.png")
        for size, skin in ("299x240", "narrow"), ("320x49", "low"):
            convert(f"{folder}/pressed.png", "-crop", f"{size}+0+0", "+repage", f"PNG24:{folder}/{skin}.png")
        convert(f"{folder}/pressed.png", "-colorspace", "gray", f"{folder}/grey.pgm")
        os.mkfifo(f"{folder}/fifo.png")
        browser = start_browser(f"{folder}/profile")
        try:
            page = Page(browser, folder)
            page.load(program)
            page.tell(STORIES)
            browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {"width": 200, "height": 200, "deviceScaleFactor": 1, "mobile": False})
            page.until(lambda: page.place(WIDTH, 0)["x"] < 201, "the screen does not fit into the window")
            page.tell("a small window: down 60 80, shows 3+, up, exit status 3, shift 100 100, move 260 180, up, button 6:100:100:160:80,"
                      " touch 60 110, shows 3+, drag 60 65, shows 3+, lift, exit status 3")
            for *change, story in STARTS:
                page.load(program, change)
                page.tell(story)
            outside = page.script("return performance.getEntriesByType('resource').map(e => e.name).filter(n => !n.startsWith('data:'))")
            complaints = [entry for entry in browser.get_log("browser") if entry["level"] == "SEVERE"]
            if outside or complaints:
                sys.exit(f"page: it fetches {outside} and complains {complaints}")
        finally:
            browser.quit()


main(sys.argv[1])
