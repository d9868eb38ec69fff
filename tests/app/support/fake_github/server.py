#!/usr/bin/env python3
# A fake GitHub: enough REST and GraphQL for the gh commands Velmar runs, over HTTPS on 127.0.0.1.
# Usage: server.py DIR. Reads DIR/fixture.json ({"token", "login", "owned": [slug], "shared": [slug],
# "repos": {slug: [{"number", "title", "author", "branch", "draft", "url", "comments": [{"author", "body"}]}]}}),
# writes DIR/cert.pem for gh's SSL_CERT_FILE and prints "PORT <n>" once it listens. Other tokens get 401.
import http.server, json, os, re, ssl, subprocess, sys


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *args):
        pass

    def answer(self, status, payload, headers=()):
        if self.headers.get("Authorization") != "token " + self.fixture["token"]:
            status, payload = 401, {"message": "Bad credentials"}
        body = json.dumps(payload).encode("utf-8")
        self.send_response(status)
        for name, value in [("Content-Type", "application/json; charset=utf-8"),
                            ("Content-Length", str(len(body))), *headers]:
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(body)

    def do_GET(self):
        path = self.path.split("?", 1)[0]
        if path in ("/api/v3/", "/api/v3"):
            self.answer(200, {}, [("X-Oauth-Scopes", "repo, read:org, gist")])
        elif path == "/api/v3/user/repos":
            self.answer(200, [{"full_name": name} for name in self.fixture.get("shared", [])])
        else:
            self.answer(404, {"message": "Not Found"})

    def do_POST(self):
        request = json.loads(self.rfile.read(int(self.headers.get("Content-Length") or 0)) or b"{}")
        found = re.search(r"query\s+(\w+)", request.get("query", ""))
        operation, variables = found.group(1) if found else "", request.get("variables") or {}
        login, slug = self.fixture.get("login"), "%s/%s" % (variables.get("owner"), variables.get("repo"))
        prs = self.fixture.get("repos", {}).get(slug)
        if operation == "UserCurrent":
            data = {"viewer": {"login": login}}
        elif operation == "Repository_fields":
            data = {"Repository": {"fields": []}}
        elif operation == "RepositoryList":
            data = {"repositoryOwner": {"login": login, "repositories": {
                "nodes": [{"nameWithOwner": n} for n in self.fixture.get("owned", [])]}}}
        elif operation == "PullRequestList" and prs is not None:
            data = {"repository": {"pullRequests": {"totalCount": len(prs), "nodes": [{
                "number": pr["number"], "title": pr["title"], "author": {"login": pr["author"], "id": "U_1"},
                "headRefName": pr["branch"], "isDraft": pr.get("draft", False),
                "url": pr.get("url", "https://github.com/%s/pull/%d" % (slug, pr["number"])),
                "comments": {"nodes": [{"author": c["author"] and {"login": c["author"]}, "body": c["body"]}
                                       for c in pr.get("comments", [])]}}
                for pr in prs[:variables["limit"]]]}}}
        else:
            return self.answer(200, {"data": None, "errors": [{"message": "no %s for %s" % (operation, slug)}]})
        self.answer(200, {"data": data})


folder = sys.argv[1]
with open(os.path.join(folder, "fixture.json"), encoding="utf-8") as f:
    Handler.fixture = json.load(f)
cert, key = os.path.join(folder, "cert.pem"), os.path.join(folder, "key.pem")
subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", cert, "-days",
                "2", "-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1"],
               check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(cert, key)
server.socket = context.wrap_socket(server.socket, server_side=True)
print("PORT %d" % server.server_address[1], flush=True)
server.serve_forever()
