#!/usr/bin/env python3
"""A scanner process that does what a test tells it to.

ZEL_SCRIPT_FOLDER names a folder. Each start appends a line to "launches" there and runs "script.<n>" of its number
(from 1), or "script" where that is missing. A script is one action a line:

  exit CODE         end at once
  late SECONDS      wait before listening
  listen            take the port and one client
  listen-and-drop   take clients and close each connection at once, until this process is ended
  then, one line a request, in the order of the requests:
  value JSON        reply with that value
  error CODE TEXT   reply with an error
  result JSON       write what the JSON text holds to the result file and reply with null
  close             close the connection and end
  crash             die of a signal
  hang              do nothing until this process is ended
  bytes HEX         send these bytes as they are, and go on with the next line for the same request
  wait NAME         wait for the file NAME in the folder, and go on with the next line for the same request
  bytewise          from here on, send replies byte by byte
  twice JSON        reply with that value, twice

Every request is logged to "log", one JSON object a line.
"""
import json
import os
import signal
import socket
import struct
import sys
import time

FOLDER = os.environ["ZEL_SCRIPT_FOLDER"]
PORT = 18201


def path(name):
    return os.path.join(FOLDER, name)


def read_script():
    with open(path("launches"), "a") as launches:
        launches.write("%d\n" % os.getpid())
    with open(path("launches")) as launches:
        number = len(launches.readlines())
    name = path("script.%d" % number)
    with open(name if os.path.exists(name) else path("script")) as script:
        return [line.rstrip("\n") for line in script]


def sleep_for_ever():
    """Nothing, until this process is ended or the test has gone."""
    parent = os.getppid()
    while os.getppid() == parent:
        time.sleep(0.1)
    os._exit(0)


class Connection:
    def __init__(self, peer):
        self.peer = peer
        self.bytewise = False
        self.result_path = None

    def receive(self):
        head = self.receive_exactly(4)
        if head is None:
            os._exit(0)
        body = self.receive_exactly(struct.unpack("<I", head)[0])
        request = json.loads(body)
        with open(path("log"), "a") as log:
            log.write(json.dumps(request) + "\n")
        if request["method"].endswith(".Connect"):
            self.result_path = request["params"][3]
        return request

    def receive_exactly(self, count):
        data = b""
        while len(data) < count:
            try:
                part = self.peer.recv(count - len(data))
            except ConnectionResetError:
                return None
            if not part:
                return None
            data += part
        return data

    def send(self, message):
        body = json.dumps(message).encode()
        data = struct.pack("<I", len(body)) + body
        if not self.bytewise:
            self.peer.sendall(data)
            return
        for i in range(len(data)):
            self.peer.sendall(data[i:i + 1])


def listen():
    server = socket.socket()
    server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    deadline = time.time() + 8
    while True:
        try:
            server.bind(("127.0.0.1", PORT))
            break
        except OSError:
            if time.time() > deadline:
                os._exit(3)
            time.sleep(0.02)
    server.listen(4)
    return server


def accept_one():
    server = listen()
    peer, _ = server.accept()
    server.close()
    peer.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
    return Connection(peer)


def answer(connection, request, word, rest):
    """Acts on one line; true when the line was the answer to the request."""
    reply = {"jsonrpc": "2.0", "id": request["id"]}
    if word == "value" or word == "twice":
        reply["result"] = {"value": json.loads(rest)}
        connection.send(reply)
        if word == "twice":
            connection.send(reply)
    elif word == "error":
        code, text = rest.split(" ", 1)
        reply["error"] = {"code": int(code), "message": text}
        connection.send(reply)
    elif word == "result":
        with open(connection.result_path, "w") as result:
            result.write(json.loads(rest))
        reply["result"] = {"value": None}
        connection.send(reply)
    elif word == "close":
        connection.peer.close()
        os._exit(0)
    elif word == "crash":
        signal.signal(signal.SIGSEGV, signal.SIG_DFL)
        os.kill(os.getpid(), signal.SIGSEGV)
    elif word == "hang":
        sleep_for_ever()
    elif word == "bytes":
        connection.peer.sendall(bytes.fromhex(rest))
        return False
    elif word == "wait":
        while not os.path.exists(path(rest)):
            time.sleep(0.002)
        return False
    elif word == "bytewise":
        connection.bytewise = True
        return False
    else:
        sys.exit("unknown action: " + word)
    return True


def main():
    connection = None
    request = None
    for line in read_script():
        word, _, rest = line.partition(" ")
        if word == "exit":
            os._exit(int(rest))
        elif word == "late":
            time.sleep(float(rest))
        elif word == "listen":
            connection = accept_one()
        elif word == "listen-and-drop":
            server = listen()
            while True:
                server.accept()[0].close()
        else:
            if request is None:
                request = connection.receive()
            if answer(connection, request, word, rest):
                request = None
    if connection is not None:
        while True:
            connection.receive()


main()
