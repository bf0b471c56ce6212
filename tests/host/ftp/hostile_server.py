"""An FTP server on 127.0.0.1 that misbehaves as the options say, and prints its port: hostile_server.py DIRECTORY [options]"""

import argparse
import os
import random
import socket
import threading
import time

parser = argparse.ArgumentParser()
parser.add_argument("directory")
parser.add_argument("--cuts", type=int, default=0, help="number of transfers that end at a random byte")
parser.add_argument("--ignore-rest", action="store_true", help="sends files from the start after REST")
parser.add_argument("--refuse-rest", action="store_true")
parser.add_argument("--size", type=int, help="reported size of every file")
parser.add_argument("--no-time", action="store_true", help="supports neither MLSD nor MDTM")
parser.add_argument("--listing", help="file that is sent as each listing")
parser.add_argument("--endless", action="store_true", help="listings and files never end")
parser.add_argument("--slow", action="store_true", help="6 MB a second")
parser.add_argument("--stall", choices=["greeting", "data", "reply"])
parser.add_argument("--drip", choices=["greeting", "reply", "end"], help="a reply that never ends")
parser.add_argument("--elsewhere", action="store_true", help="names another host for data connections")
parser.add_argument("--echo", action="store_true", help="refuses the login and repeats the password in the reply")
parser.add_argument("--log", help="file that each command is written to")
options = parser.parse_args()
chance = random.Random(1)
lock = threading.Lock()


def take_cut():
    """Which connections of a transfer to close early, or None."""
    with lock:
        if options.cuts == 0:
            return None
        options.cuts -= 1
        return chance.choice(["data", "control", "both"])


class Session:
    def __init__(self, control):
        self.control = control
        self.directory = "/"
        self.offset = 0
        self.listener = None
        self.password = ""

    def say(self, text):
        self.control.sendall(text.encode() + b"\r\n")

    def drip(self, place, code):
        while options.drip == place:
            self.say(code + "-please wait")
            time.sleep(0.2)

    def path(self, name):
        return os.path.join(options.directory, os.path.join(self.directory, name).lstrip("/"))

    def run(self):
        if options.stall == "greeting":
            time.sleep(60)
        self.drip("greeting", "220")
        self.say("220 ready")
        for line in self.control.makefile("rb"):
            text = line.decode("latin-1").rstrip("\r\n")
            if options.log:
                with open(options.log, "a") as log:
                    log.write(text + "\n")
            command, _, argument = text.partition(" ")
            handler = getattr(self, "on_" + command.lower(), None)
            if handler is None:
                self.say("502 unknown")
            else:
                handler(argument)

    def on_user(self, _):
        self.say("331 password")

    def on_pass(self, argument):
        self.say("530 not with " + argument if options.echo else "230 in")

    def on_pwd(self, _):
        self.drip("reply", "257")
        self.say('257 "' + self.directory + '"')

    def on_cwd(self, argument):
        directory = os.path.normpath(os.path.join(self.directory, argument))
        if not os.path.isdir(os.path.join(options.directory, directory.lstrip("/"))):
            return self.say("550 no such directory")
        self.directory = directory
        self.say("250 there")

    def on_type(self, _):
        self.say("200 as you like")

    def listen(self):
        self.listener = socket.create_server(("127.0.0.1", 0))
        return self.listener.getsockname()[1]

    def on_epsv(self, _):
        if options.elsewhere:
            return self.say("502 unknown")
        self.say("229 here (|||%d|)" % self.listen())

    def on_pasv(self, _):
        port = self.listen()
        host = "10,255,255,1" if options.elsewhere else "127,0,0,1"
        self.say("227 here (%s,%d,%d)" % (host, port >> 8, port & 255))

    def reported_size(self, name):
        return options.size if options.size is not None else os.path.getsize(self.path(name))

    def on_size(self, argument):
        if not os.path.isfile(self.path(argument)):
            return self.say("550 no such file")
        self.say("213 %d" % self.reported_size(argument))

    def on_mdtm(self, argument):
        if options.no_time or not os.path.isfile(self.path(argument)):
            return self.say("550 not known")
        self.say("213 " + time.strftime("%Y%m%d%H%M%S", time.gmtime(os.path.getmtime(self.path(argument)))))

    def on_rest(self, argument):
        if options.refuse_rest:
            return self.say("502 unknown")
        self.offset = int(argument)
        self.say("350 from there")

    def send(self, content, cut=None):
        if options.stall == "reply":
            time.sleep(60)
        self.say("150 here it comes")
        data, _ = self.listener.accept()
        self.listener.close()
        if cut:
            content = content[: chance.randrange(len(content) + 1)]
        piece = 65536 if options.slow else max(len(content), 1)
        for start in range(0, len(content), piece):
            data.sendall(content[start : start + piece])
            time.sleep(0.01 if options.slow else 0)
        while options.endless:
            data.sendall(content)
        if options.stall == "data":
            time.sleep(60)
        if cut == "control":
            self.control.shutdown(socket.SHUT_RDWR)
        data.close()
        if cut == "data":
            self.say("426 cut")
        elif cut:
            raise ConnectionError
        else:
            self.drip("end", "226")
            self.say("226 done")

    def on_retr(self, argument):
        if not os.path.isfile(self.path(argument)):
            return self.say("550 no such file")
        with open(self.path(argument), "rb") as file:
            content = file.read()
        offset = 0 if options.ignore_rest else self.offset
        self.offset = 0
        self.send(content[offset:], take_cut())

    def names(self):
        return sorted(os.listdir(self.path("")))

    def listing(self, lines):
        if options.listing:
            with open(options.listing, "rb") as file:
                return self.send(file.read())
        self.send("".join(line + "\r\n" for line in lines).encode())

    def on_mlsd(self, _):
        if options.no_time:
            return self.say("502 unknown")
        lines = []
        for name in self.names():
            if os.path.isdir(self.path(name)):
                lines.append("type=dir; " + name)
            else:
                stamp = time.strftime("%Y%m%d%H%M%S", time.gmtime(os.path.getmtime(self.path(name))))
                lines.append("type=file;size=%d;modify=%s; %s" % (self.reported_size(name), stamp, name))
        self.listing(lines)

    def on_list(self, _):
        lines = []
        for name in self.names():
            kind = "d" if os.path.isdir(self.path(name)) else "-"
            lines.append("%srw-r--r-- 1 owner group %d Jan 01 12:00 %s" % (kind, self.reported_size(name), name))
        self.listing(lines)

    def on_quit(self, _):
        self.say("221 bye")


def serve(control):
    try:
        Session(control).run()
    except OSError:
        pass
    finally:
        control.close()


def main():
    server = socket.create_server(("127.0.0.1", 0))
    print(server.getsockname()[1], flush=True)
    while True:
        control, _ = server.accept()
        control.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        threading.Thread(target=serve, args=(control,), daemon=True).start()


main()
