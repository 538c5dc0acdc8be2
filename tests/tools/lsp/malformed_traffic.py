#!/usr/bin/env python3
"""Bad traffic sent to `orane-story lsp`: each gets the protocol's answer or is dropped as the
protocol says, and the server goes on serving. Usage: malformed_traffic.py ORANE_STORY SOURCE_DIR"""

import os
import shutil
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from lspclient import LspClient, uri  # noqa: E402

failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("FAILED:", what)


def still_serving(client, story, what):
    answer = client.request("textDocument/documentSymbol", {"textDocument": {"uri": uri(story)}}, timeout=60)
    check(isinstance(answer.get("result"), list) and len(answer["result"]) > 5, "serving after " + what)


def main():
    tool, source = sys.argv[1], sys.argv[2]
    directory = Path(tempfile.mkdtemp(prefix="orane-lsp-traffic-"))
    try:
        for path in (Path(source) / "resources" / "stories").iterdir():
            shutil.copy(path, directory / path.name)
        # A binary file in the folder, and one where the game expects a suspect's story.
        (directory / "portrait.png").write_bytes(bytes(range(256)) * 64)
        with open(directory / "suspects.ini", "a", encoding="utf-8") as suspects:
            suspects.write("binaire\n")
        (directory / "binaire.txt").write_bytes(b"SCENE binaire_begin\n\x00\xff\xfe" + bytes(range(256)) + b"\n")
        story = directory / "story.txt"

        client = LspClient([tool, "lsp"])
        client.initialize(directory)
        client.open(story)
        found = client.wait_for_diagnostics(uri(directory / "binaire.txt"), lambda found: len(found) > 0, timeout=60)
        check(any(d["severity"] == 1 for d in found), "the binary suspect's file gets the game's error")

        # Not JSON, a body cut short by a Content-Length too small (its rest then reads as a
        # header block without a Content-Length), a header block without one: three errors.
        client.send_raw(b"Content-Length: 12\r\n\r\n{not json!!}")
        body = b'{"jsonrpc":"2.0","id":900,"method":"shutdown"}'
        client.send_raw(b"Content-Length: 10\r\n\r\n" + body)
        client.send_raw(b"Content-Type: text/plain\r\n\r\n{}")
        errors = []
        while len(errors) < 3:
            message = client.read_message(30)
            if message is None:
                break
            if "error" in message:
                errors.append(message)
        check(len(errors) == 3 and all(e["id"] is None for e in errors), "unreadable messages get errors with a null id")
        check(errors and errors[0]["error"]["code"] == -32700, "a body that is not JSON is a parse error")
        still_serving(client, story, "unreadable messages")

        # A Content-Length too large swallows the next message: it is read again afterwards.
        request = b'{"jsonrpc":"2.0","id":901,"method":"textDocument/hover","params":' \
                  b'{"textDocument":{"uri":"%s"},"position":{"line":0,"character":0}}}' % uri(story).encode()
        framed = b"Content-Length: %d\r\n\r\n%s" % (len(request), request)
        client.send_raw(b"Content-Length: %d\r\n\r\n{\"jsonrpc\"" % (len(framed) + 10) + framed)
        check("result" in client.response(901), "the message after a Content-Length too large is answered")

        answer = client.request("orane/noSuchThing", {})
        check(answer.get("error", {}).get("code") == -32601, "an unknown method is METHOD_NOT_FOUND")
        client.notify("orane/noSuchNotification", {"x": 1})
        client.send({"jsonrpc": "2.0", "id": 902, "method": "textDocument/definition", "params": {"textDocument": 3}})
        check(client.response(902).get("error", {}).get("code") == -32602, "params of the wrong shape are INVALID_PARAMS")

        far = {"textDocument": {"uri": uri(story)}, "position": {"line": 999999, "character": 999999}}
        for method in ("textDocument/definition", "textDocument/hover", "textDocument/completion", "textDocument/references"):
            params = dict(far, context={"includeDeclaration": True})
            answer = client.request(method, params)
            check("result" in answer, method + " past the end of the document is answered")
        client.change(story, 2, (999999, 5), (999999, 9), "SCENE ajout\n")
        still_serving(client, story, "an edit past the end")

        # A 50 MB document, then a request cancelled right after it was sent.
        big = directory / "Annexe.txt"
        client.open(big, "SCENE annexe\nORANE\n" + ("Une ligne de plus dans un très long document.\n" * 1100000))
        identifier = client.request_async("textDocument/hover", {"textDocument": {"uri": uri(story)},
                                                                 "position": {"line": 0, "character": 7}})
        client.notify("$/cancelRequest", {"id": identifier})
        answer = client.response(identifier, timeout=120)
        check("result" in answer or answer.get("error", {}).get("code") == -32800,
              "a cancelled request is answered or refused as cancelled")
        client.change(big, 2, (3, 0), (3, 4), "Deux")
        still_serving(client, story, "a 50 MB document")

        check(client.close() == 0, "shutdown then exit ends with status 0")
    finally:
        shutil.rmtree(directory, ignore_errors=True)
    if failures:
        sys.exit(1)
    print("malformed traffic: every message answered as the protocol says, and the server kept serving")


if __name__ == "__main__":
    main()
