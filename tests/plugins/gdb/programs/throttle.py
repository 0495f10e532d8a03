#!/usr/bin/python3
"""throttle.py SOCKET RATE: a slow debug probe. Passes on what a debugger sends to the socket, RATE bytes in a second, and
all answers at once. Prints its port."""
import socket
import sys
import threading
import time

STEP = 0.02  # seconds


def copy(source, to, rate):
    while data := source.recv(65536 if rate is None else max(1, int(rate * STEP))):
        to.sendall(data)
        if rate is not None:
            time.sleep(len(data) / rate)
    to.shutdown(socket.SHUT_WR)


listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
debugger = listener.accept()[0]
target = socket.socket(socket.AF_UNIX)
target.connect(sys.argv[1])
threading.Thread(target=copy, args=(target, debugger, None), daemon=True).start()
copy(debugger, target, int(sys.argv[2]))
