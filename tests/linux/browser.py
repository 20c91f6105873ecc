"""A browser without a screen, driven over its debugging pipe: pages are opened, pointed at, printed
and asked what they hold, as they are."""
import base64
import fcntl
import json
import os
import subprocess
import tempfile


class Browser:
    """One tab of a Chromium; with nothing but itself to be reached."""

    def __init__(self, program):
        self.profile = tempfile.TemporaryDirectory()
        below = [os.pipe(), os.pipe()]
        ends = [fcntl.fcntl(end, fcntl.F_DUPFD_CLOEXEC, 10) for pair in below for end in pair]
        for pair in below:
            os.close(pair[0])
            os.close(pair[1])
        orders, self.orders, self.answers, answers = ends
        self.buffer, self.count, self.seen = b"", 0, []

        def give():
            os.dup2(orders, 3)
            os.dup2(answers, 4)

        self.process = subprocess.Popen(
            [program, "--headless", "--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu", "--hide-scrollbars",
             "--disable-background-networking", "--host-resolver-rules=MAP * ~NOTFOUND",
             "--remote-debugging-pipe", f"--user-data-dir={self.profile.name}", "about:blank"],
            preexec_fn=give, pass_fds=(3, 4), stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(orders)
        os.close(answers)
        self.session = None
        target = next(each for each in self.send("Target.getTargets")["targetInfos"]
                      if each["type"] == "page")
        self.session = self.send("Target.attachToTarget", targetId=target["targetId"],
                                 flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Log", "Runtime"):
            self.send(f"{domain}.enable")

    def close(self):
        self.session = None
        self.send("Browser.close")
        self.process.wait(30)
        self.profile.cleanup()

    def take(self):
        while b"\0" not in self.buffer:
            more = os.read(self.answers, 1 << 16)
            if not more:
                raise SystemExit("the browser has gone")
            self.buffer += more
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def send(self, method, **parameters):
        self.count += 1
        order = {"id": self.count, "method": method, "params": parameters}
        if self.session:
            order["sessionId"] = self.session
        os.write(self.orders, json.dumps(order).encode() + b"\0")
        while True:
            message = self.take()
            if message.get("id") == self.count:
                if "error" in message:
                    raise SystemExit(f"{method}: {message['error']}")
                return message["result"]
            self.seen.append(message)

    def open(self, file, width=1280, height=900, media=None, scheme="light", scripts=True):
        """Opens a page and waits until it is there. What it asked for and complained about is in
        requests and complaints then."""
        self.seen = []
        self.send("Emulation.setScriptExecutionDisabled", value=not scripts)
        self.send("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=width < 600)
        self.send("Emulation.setEmulatedMedia", media=media or "",
                  features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.send("Page.navigate", url="file://" + os.path.abspath(file))
        while not any(each.get("method") == "Page.loadEventFired" for each in self.seen):
            self.seen.append(self.take())
        self.send("Runtime.evaluate", expression="0")  # what happened until now has been told

    def parameters(self, method):
        return [each["params"] for each in self.seen if each.get("method") == method]

    @property
    def requests(self):
        return [each["request"]["url"] for each in self.parameters("Network.requestWillBeSent")]

    @property
    def complaints(self):
        logged = [each["entry"]["text"] for each in self.parameters("Log.entryAdded")]
        thrown = [each["exceptionDetails"]["text"] for each in
                  self.parameters("Runtime.exceptionThrown")]
        return logged + thrown

    def ask(self, expression):
        answer = self.send("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in answer:
            raise SystemExit(f"{expression}: {answer['exceptionDetails']}")
        return answer["result"].get("value")

    def point(self, x, y):
        self.send("Input.dispatchMouseEvent", type="mouseMoved", x=x, y=y)

    def press(self, key, shift=False):
        for kind in ("keyDown", "keyUp"):
            self.send("Input.dispatchKeyEvent", type=kind, key=key, code=key,
                      modifiers=8 if shift else 0)

    def picture(self, file):
        """Keeps what the tab shows."""
        size = self.send("Page.getLayoutMetrics")["cssContentSize"]
        shot = self.send("Page.captureScreenshot", captureBeyondViewport=True,
                         clip=dict(size, scale=1))
        with open(file, "wb") as stream:
            stream.write(base64.b64decode(shot["data"]))

    def printed(self):
        """The page as PDF, on the paper that it asks for."""
        sheet = self.send("Page.printToPDF", preferCSSPageSize=True, printBackground=True)
        return base64.b64decode(sheet["data"])
