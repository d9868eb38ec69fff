#!/usr/bin/env python3
"""A fake GitHub for tests: just enough of the REST and GraphQL API for the
gh commands Velmar runs, on 127.0.0.1 over HTTPS with a self-signed
certificate made at start.

Usage: server.py --dir DIR --fixture FILE.json [--delay-ms N]

Writes DIR/cert.pem (give it to gh as SSL_CERT_FILE), prints "PORT <n>" on
standard output once it listens, and appends one JSON line per request to
DIR/requests.jsonl: method, path, GraphQL operation name and variables.

The fixture:
  {"token": "...", "login": "...",
   "repos": {"owner/name": [{"number": 1, "title": "...", "author": "...",
                             "branch": "...", "draft": false, "url": "...",
                             "comments": [{"author": "vercel", "body": "..."}]}]},
   "owned": ["owner/name", ...], "shared": ["owner/name", ...]}
A request whose token differs from "token" gets 401.
"""
import argparse
import http.server
import json
import os
import re
import ssl
import subprocess
import sys
import threading
import time

REPOSITORY_FIELDS = [
    "id", "name", "nameWithOwner", "owner", "description", "url", "isPrivate",
    "isFork", "isArchived", "pushedAt", "updatedAt", "createdAt", "visibility",
    "defaultBranchRef", "primaryLanguage", "stargazerCount", "forkCount",
]


def make_certificate(folder):
    cert = os.path.join(folder, "cert.pem")
    key = os.path.join(folder, "key.pem")
    if not os.path.exists(cert):
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes",
             "-keyout", key, "-out", cert, "-days", "2", "-subj", "/CN=localhost",
             "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1"],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return cert, key


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    fixture = {}
    log_path = ""
    delay = 0.0
    log_lock = threading.Lock()

    def log_message(self, *args):
        pass

    def record(self, operation=None, variables=None):
        entry = {"method": self.command, "path": self.path}
        if operation is not None:
            entry["operation"] = operation
            entry["variables"] = variables or {}
        with self.log_lock, open(self.log_path, "a", encoding="utf-8") as log:
            log.write(json.dumps(entry) + "\n")

    def answer(self, status, payload, headers=None):
        body = json.dumps(payload).encode("utf-8")
        self.send_response(status)
        self.send_header("Content-Type", "application/json; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        for name, value in (headers or {}).items():
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(body)

    def authorised(self):
        given = self.headers.get("Authorization", "")
        if given == "token " + self.fixture.get("token", ""):
            return True
        self.answer(401, {"message": "Bad credentials",
                          "documentation_url": "https://docs.github.com/rest"})
        return False

    def do_GET(self):
        if self.delay:
            time.sleep(self.delay)
        self.record()
        if not self.authorised():
            return
        path = self.path.split("?", 1)[0]
        if path in ("/api/v3/", "/api/v3"):
            self.answer(200, {"current_user_url": "https://localhost/api/v3/user"},
                        {"X-Oauth-Scopes": "repo, read:org, gist"})
        elif path == "/api/v3/user/repos":
            self.answer(200, [{"full_name": name, "name": name.split("/")[-1]}
                              for name in self.fixture.get("shared", [])])
        else:
            self.answer(404, {"message": "Not Found"})

    def do_POST(self):
        if self.delay:
            time.sleep(self.delay)
        length = int(self.headers.get("Content-Length") or 0)
        request = json.loads(self.rfile.read(length) or b"{}")
        query = request.get("query", "")
        variables = request.get("variables") or {}
        found = re.search(r"query\s+(\w+)", query)
        operation = found.group(1) if found else ""
        self.record(operation, variables)
        if not self.authorised():
            return
        if self.path != "/api/graphql":
            self.answer(404, {"message": "Not Found"})
            return
        handler = {
            "UserCurrent": self.user_current,
            "PullRequestList": self.pull_request_list,
            "Repository_fields": self.repository_fields,
            "RepositoryList": self.repository_list,
        }.get(operation)
        if handler is None:
            self.answer(200, {"errors": [{"message": "unknown operation " + operation}]})
        else:
            self.answer(200, handler(variables))

    def user_current(self, variables):
        return {"data": {"viewer": {"login": self.fixture.get("login", "octo")}}}

    def repository_fields(self, variables):
        return {"data": {"Repository": {"fields": [{"name": f} for f in REPOSITORY_FIELDS]}}}

    def repository_list(self, variables):
        names = self.fixture.get("owned", [])
        return {"data": {"repositoryOwner": {
            "login": self.fixture.get("login", "octo"),
            "repositories": {
                "nodes": [{"nameWithOwner": n} for n in names],
                "totalCount": len(names),
                "pageInfo": {"hasNextPage": False, "endCursor": None}}}}}

    def pull_request_list(self, variables):
        slug = "%s/%s" % (variables.get("owner"), variables.get("repo"))
        prs = self.fixture.get("repos", {}).get(slug)
        if prs is None:
            return {"data": {"repository": None}, "errors": [{
                "type": "NOT_FOUND", "path": ["repository"],
                "locations": [{"line": 7, "column": 4}],
                "message": "Could not resolve to a Repository with the name '%s'." % slug}]}
        limit = int(variables.get("limit", 30))
        nodes = [self.pull_request(slug, pr) for pr in prs[:limit]]
        return {"data": {"repository": {"pullRequests": {
            "totalCount": len(prs), "nodes": nodes,
            "pageInfo": {"hasNextPage": False, "endCursor": None}}}}}

    @staticmethod
    def pull_request(slug, pr):
        comments = []
        for i, c in enumerate(pr.get("comments", [])):
            author = c.get("author")
            comments.append({
                "id": "IC_%d_%d" % (pr["number"], i),
                "author": {"login": author} if author is not None else None,
                "authorAssociation": "NONE", "body": c.get("body", ""),
                "createdAt": "2024-01-01T00:00:00Z", "includesCreatedEdit": False,
                "isMinimized": False, "minimizedReason": "", "reactionGroups": [],
                "url": "https://github.com/%s/pull/%d#c%d" % (slug, pr["number"], i),
                "viewerDidAuthor": False})
        return {
            "number": pr["number"], "title": pr.get("title", ""),
            "author": {"login": pr.get("author", "someone"), "id": "U_1", "name": ""},
            "headRefName": pr.get("branch", "main"), "isDraft": pr.get("draft", False),
            "url": pr.get("url", "https://github.com/%s/pull/%d" % (slug, pr["number"])),
            "comments": {"nodes": comments, "totalCount": len(comments),
                         "pageInfo": {"hasNextPage": False, "endCursor": None}}}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--dir", required=True)
    parser.add_argument("--fixture", required=True)
    parser.add_argument("--delay-ms", type=int, default=0)
    args = parser.parse_args()

    with open(args.fixture, encoding="utf-8") as f:
        Handler.fixture = json.load(f)
    Handler.log_path = os.path.join(args.dir, "requests.jsonl")
    Handler.delay = args.delay_ms / 1000.0
    cert, key = make_certificate(args.dir)

    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(cert, key)
    server.socket = context.wrap_socket(server.socket, server_side=True)
    print("PORT %d" % server.server_address[1], flush=True)
    try:
        server.serve_forever()
    except KeyboardInterrupt:
        pass


if __name__ == "__main__":
    sys.exit(main())
