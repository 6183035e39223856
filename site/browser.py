"""Headless Chromium, driven through its DevTools protocol over two pipes: no driver and no library in between."""
import json
import os
import shutil
import subprocess
import tempfile
import time


class Browser:
    def __init__(self):
        self.profile = tempfile.mkdtemp()
        down_read, down_write = os.pipe()
        up_read, up_write = os.pipe()

        def pipes():  # Chromium reads from 3 and writes to 4
            low = os.dup2(down_read, 64), os.dup2(up_write, 65)
            os.dup2(low[0], 3)
            os.dup2(low[1], 4)

        self.process = subprocess.Popen(
            [
                shutil.which("chromium") or "chromium",
                "--headless",
                "--no-sandbox",
                "--disable-gpu",
                "--hide-scrollbars",
                "--disable-dev-shm-usage",
                "--no-first-run",
                "--host-resolver-rules=MAP * ~NOTFOUND",
                f"--user-data-dir={self.profile}",
                "--remote-debugging-pipe",
                "about:blank",
            ],
            preexec_fn=pipes,
            pass_fds=(3, 4),
            stderr=subprocess.DEVNULL,
        )
        os.close(down_read)
        os.close(up_write)
        self.out, self.into = os.fdopen(down_write, "wb", 0), os.fdopen(up_read, "rb")
        self.buffer, self.count, self.events, self.session = b"", 0, [], None
        target = self.send("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.send("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log"):
            self.send(f"{domain}.enable")

    def close(self):
        self.process.terminate()
        self.process.wait()
        shutil.rmtree(self.profile, ignore_errors=True)

    def receive(self):
        while b"\0" not in self.buffer:
            piece = os.read(self.into.fileno(), 1 << 16)
            if not piece:
                raise SystemExit("Chromium went away")
            self.buffer += piece
        message, _, self.buffer = self.buffer.partition(b"\0")
        return json.loads(message)

    def send(self, method, **parameters):
        self.count += 1
        message = {"id": self.count, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        self.out.write(json.dumps(message).encode() + b"\0")
        while True:
            answer = self.receive()
            if answer.get("id") == self.count:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]
            self.events.append(answer)

    def run(self, script):
        """The value of an expression in the page; promises are waited for."""
        answer = self.send(
            "Runtime.evaluate", expression=script, returnByValue=True, awaitPromise=True, userGesture=True
        )
        if "exceptionDetails" in answer:
            raise RuntimeError(json.dumps(answer["exceptionDetails"]))
        return answer["result"].get("value")

    def wait(self, condition):
        """Until an expression in the page holds; for ten seconds at most."""
        end = time.monotonic() + 10
        while not self.run(condition):
            if time.monotonic() > end:
                return False
            time.sleep(0.01)
        return True

    def open(self, address):
        self.send("Page.navigate", url="about:blank")  # so that a change after # loads as well
        self.send("Page.navigate", url=address)
        if not self.wait("document.readyState === 'complete' && location.href !== 'about:blank'"):
            raise SystemExit(f"{address} does not load")

    def look(self, scheme, width, height):
        self.send("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.send(
            "Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=width < 600
        )

    def key(self, key, text=None):
        codes = {"ArrowDown": 40, "ArrowUp": 38, "Enter": 13, "Escape": 27, "/": 191}
        extra = {"text": text} if text else {}
        self.send("Input.dispatchKeyEvent", type="keyDown", key=key, windowsVirtualKeyCode=codes.get(key, 0), **extra)
        self.send("Input.dispatchKeyEvent", type="keyUp", key=key, windowsVirtualKeyCode=codes.get(key, 0))

    def type(self, text):
        self.send("Input.insertText", text=text)

    def complaints(self):
        """Errors and warnings that pages left in the console, since the last question."""
        found = []
        for event in self.events:
            method, parameters = event.get("method"), event.get("params", {})
            if method == "Runtime.exceptionThrown":
                found.append(parameters["exceptionDetails"].get("exception", {}).get("description", "exception"))
            elif method == "Runtime.consoleAPICalled" and parameters["type"] in ("error", "warning", "assert"):
                found.append(str([a.get("value") for a in parameters["args"]]))
            elif method == "Log.entryAdded" and parameters["entry"]["level"] in ("error", "warning"):
                found.append(f"{parameters['entry']['text']} {parameters['entry'].get('url', '')}")
        self.events.clear()
        return found

    def screenshot(self, path):
        import base64

        data = self.send("Page.captureScreenshot", format="png")["data"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(data))
