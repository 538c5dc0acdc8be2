"""A small client of the story language server for tests and benchmarks: frames messages,
reads answers and notifications, and keeps the diagnostics last published per file."""

import json
import os
import select
import subprocess
import time
from pathlib import Path


def uri(path):
    return Path(path).resolve().as_uri()


class LspClient:
    def __init__(self, command, cwd=None, stderr=subprocess.DEVNULL):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=stderr, cwd=cwd)
        self.buffer = b""
        self.next_id = 1
        self.diagnostics = {}
        self.notifications = []

    # ---- sending

    def send_raw(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()

    def send(self, message):
        body = json.dumps(message).encode()
        self.send_raw(b"Content-Length: %d\r\n\r\n" % len(body) + body)

    def notify(self, method, params):
        self.send({"jsonrpc": "2.0", "method": method, "params": params})

    def request_async(self, method, params):
        identifier = self.next_id
        self.next_id += 1
        self.send({"jsonrpc": "2.0", "id": identifier, "method": method, "params": params})
        return identifier

    def request(self, method, params, timeout=30):
        return self.response(self.request_async(method, params), timeout)

    # ---- receiving

    def read_message(self, timeout):
        """The next message, or None when none arrives in time."""
        deadline = time.monotonic() + timeout
        while True:
            header_end = self.buffer.find(b"\r\n\r\n")
            if header_end >= 0:
                headers = self.buffer[:header_end].decode()
                length = int(headers.split("Content-Length:")[1].split("\r\n")[0])
                start = header_end + 4
                if len(self.buffer) >= start + length:
                    body = self.buffer[start:start + length]
                    self.buffer = self.buffer[start + length:]
                    message = json.loads(body)
                    if message.get("method") == "textDocument/publishDiagnostics":
                        self.diagnostics[message["params"]["uri"]] = message["params"]["diagnostics"]
                    return message
            left = deadline - time.monotonic()
            if left <= 0:
                return None
            ready, _, _ = select.select([self.process.stdout], [], [], left)
            if not ready:
                return None
            chunk = os.read(self.process.stdout.fileno(), 1 << 16)
            if not chunk:
                return None
            self.buffer += chunk

    def response(self, identifier, timeout=30):
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            message = self.read_message(deadline - time.monotonic())
            if message is None:
                break
            if message.get("id") == identifier and "method" not in message:
                return message
            if "method" in message:
                self.notifications.append(message)
        raise TimeoutError("no response to request %s" % identifier)

    def wait_for_diagnostics(self, file_uri, predicate=lambda diagnostics: True, timeout=30):
        """Waits for a publication for `file_uri` that satisfies `predicate`; returns it."""
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            message = self.read_message(deadline - time.monotonic())
            if message is None:
                break
            if message.get("method") == "textDocument/publishDiagnostics" and message["params"]["uri"] == file_uri \
                    and predicate(message["params"]["diagnostics"]):
                return message["params"]["diagnostics"]
        raise TimeoutError("no such diagnostics for %s" % file_uri)

    # ---- the usual conversation

    def initialize(self, root, capabilities=None):
        answer = self.request("initialize", {"processId": os.getpid(), "rootUri": uri(root),
                                             "capabilities": capabilities or {}})
        self.notify("initialized", {})
        return answer

    def open(self, path, text=None):
        text = Path(path).read_text(encoding="utf-8", errors="surrogateescape") if text is None else text
        self.notify("textDocument/didOpen", {"textDocument": {"uri": uri(path), "languageId": "orane-story",
                                                              "version": 1, "text": text}})

    def change(self, path, version, start, end, text):
        self.notify("textDocument/didChange", {
            "textDocument": {"uri": uri(path), "version": version},
            "contentChanges": [{"range": {"start": {"line": start[0], "character": start[1]},
                                          "end": {"line": end[0], "character": end[1]}}, "text": text}]})

    def close(self):
        try:
            self.request("shutdown", None, timeout=10)
            self.notify("exit", None)
            return self.process.wait(timeout=10)
        finally:
            if self.process.poll() is None:
                self.process.kill()
                self.process.wait()
