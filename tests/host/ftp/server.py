"""Serves a directory over FTP on 127.0.0.1 and prints the port: server.py DIRECTORY [--user NAME --password TEXT] [--certificate FILE]"""

import argparse
import logging

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("directory")
    arguments.add_argument("--user")
    arguments.add_argument("--password", default="")
    arguments.add_argument("--certificate", help="with its key; TLS is then required for the login")
    options = arguments.parse_args()

    logging.disable(logging.CRITICAL)
    authorizer = DummyAuthorizer()
    if options.user:
        authorizer.add_user(options.user, options.password, options.directory, perm="elr")
    else:
        authorizer.add_anonymous(options.directory, perm="elr")
    handler = FTPHandler
    if options.certificate:
        from pyftpdlib.handlers import TLS_DTPHandler, TLS_FTPHandler

        class PatientDataHandler(TLS_DTPHandler):
            # The client starts the handshake before it sends the command; the base class would close the connection.
            def readable(self):
                return self._ssl_accepting or self.receive

        handler = TLS_FTPHandler
        handler.dtp_handler = PatientDataHandler
        handler.certfile = options.certificate
        handler.tls_control_required = True
        handler.tls_data_required = True
    handler.authorizer = authorizer
    handler.auth_failed_timeout = 0
    server = FTPServer(("127.0.0.1", 0), handler)
    print(server.address[1], flush=True)
    server.serve_forever()


main()
