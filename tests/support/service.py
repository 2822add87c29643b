"""A web service on the loopback interface that behaves as the first part of a request's path says.

A GET request's path goes on with the name of a file beside RECORD, which it is about.

Usage: service.py RECORD [CERTIFICATE KEY]. Prints its port, and adds to the file RECORD a line of JSON for each request:
its path, its content type and its body, parsed as JSON.
"""

import http.server
import json
import os
import socket
import ssl
import sys
import threading
import time

record_lock = threading.Lock()


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True

    def do_POST(self):
        body = self.rfile.read(int(self.headers["Content-Length"]))
        entry = {"path": self.path, "type": self.headers["Content-Type"], "text": body.decode(), "json": json.loads(body)}
        with record_lock, open(sys.argv[1], "a") as record:
            record.write(json.dumps(entry) + "\n")
        behaviour, *arguments = self.path.split("/")[1].split("-")
        getattr(self, "be_" + behaviour)(*arguments)

    def do_GET(self):
        behaviour, name = self.path.lstrip("/").split("/", 1)
        with open(os.path.join(os.path.dirname(sys.argv[1]), os.path.basename(name)), "rb") as file:
            getattr(self, "get_" + behaviour)(name, file.read())

    def get_file(self, name, content):
        self.answer(200, content)

    def get_moved(self, name, content):
        self.answer(302, b"moved", Location=f"/file/{name}")

    def get_insecure(self, name, content):
        self.answer(302, b"", Location=f"http://{self.headers['Host']}/file/{name}")

    def get_missing(self, name, content):
        self.answer(404, content)

    def get_cut(self, name, content):
        self.begin(content)
        self.hang_up()

    def get_hang(self, name, content):
        self.begin(content)
        time.sleep(120)

    def begin(self, content):
        self.send_response(200)
        self.send_header("Content-Length", str(len(content)))
        self.end_headers()
        self.wfile.write(content[: len(content) // 2])
        self.wfile.flush()

    def answer(self, status, body, **headers):
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def be_right(self):
        self.answer(200, b'{"ok": true, "bug_report_id": "report-1"}')

    def be_late(self):
        time.sleep(0.5)
        self.be_right()

    def be_never(self):
        time.sleep(120)

    def be_half(self):
        self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nhalf")
        self.hang_up()

    def be_silent(self):
        self.hang_up()

    def be_garbage(self):
        self.wfile.write(b"\x00\xff what is HTTP?\r\n\r\n")
        self.hang_up()

    def be_status(self, status, *code):
        envelope = {"error": "_".join(code), "message": "not for the user"}
        self.answer(int(status), json.dumps(envelope).encode() if code else b"<html>busy</html>")

    def be_big(self, status):
        self.answer(int(status), b"x" * 10_000_000)

    def be_elsewhere(self, port):
        self.answer(307, b"", Location=f"http://localhost:{port}/right/elsewhere")

    def hang_up(self):
        self.close_connection = True
        self.connection.shutdown(socket.SHUT_RDWR)

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True
    request_queue_size = 128

    def handle_error(self, *_):
        pass


server = Server(("127.0.0.1", 0), Handler)
if len(sys.argv) > 2:
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[2], sys.argv[3])
    server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
print(server.server_port, flush=True)
server.serve_forever()
