#!/usr/bin/env python3
# A fake GitHub: enough REST and GraphQL for the gh commands Velmar runs, over HTTPS on 127.0.0.1.
# Usage: server.py DIR. Reads DIR/fixture.json ({"token", "login", "owned": [slug], "shared": [slug],
# "repos": {slug: [{"number", "title", "author", "branch", "draft", "url", "comments": [{"author", "body"}]}]}}),
# writes DIR/cert.pem for gh's SSL_CERT_FILE and prints "PORT <n>" once it listens. Other tokens get 401.
# The batched query ("query Batch", aliases r0.. over variables o0/n0..) and the comments query by node id
# ("query Comments", aliases c0.. over i0..) are answered too; a pull request may carry "oid", "updated",
# "checks", "review", "mergeable", a repository "deployments" in the fixture's "deployments": {slug: [...]},
# and "review_requested" lists [slug, number] pairs; the search for the viewer's own ("author:LOGIN" in variable a)
# finds every pull request whose "author" is that login. Each Comments request's ids go to DIR/comments.log, one
# request a line. Every query is first checked against GitHub's public schema (github-schema/schema.graphql in
# the shared folder beside the checkout, or $VELMAR_GITHUB_SCHEMA) by the npm package of package-lock.json, and
# one the schema rejects is refused as GitHub refuses it and logged to DIR/invalid.log. Without the schema or the
# validator every query is refused, so a missing check fails tests instead of passing them. Every GraphQL
# request's operation and cost go to DIR/costs.log; rateLimit.cost follows GitHub's published formula. Each Batch
# request goes to DIR/batches.log as "HOST COUNT" (the Host header and how many repositories it asks for); with
# "max_batch": N in the fixture a Batch over N repositories gets GitHub's answer to a query too large (HTTP 502).
import math
import http.server, json, os, re, ssl, subprocess, sys, threading


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def setup(self):
        # The TLS handshake happens here, on the request's own thread: done in
        # accept, one slow client would hold up every other connection.
        self.request.settimeout(30)
        self.request.do_handshake()
        super().setup()

    def log_message(self, *args):
        pass

    @property
    def fixture(self):
        # Read afresh for every request, so a test can change GitHub between two refreshes.
        with open(os.path.join(folder, "fixture.json"), encoding="utf-8") as f:
            return json.load(f)

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
        invalid = schema_errors(request.get("query", ""))
        if invalid:
            with open(os.path.join(folder, "invalid.log"), "a", encoding="utf-8") as log:
                log.write("%s: %s\n" % (operation, invalid))
            return self.answer(200, {"data": None, "errors": [{"message": "invalid query: " + invalid}]})
        with open(os.path.join(folder, "costs.log"), "a", encoding="utf-8") as log:
            log.write("%s %d\n" % (operation, query_cost(request.get("query", ""))))
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
        elif operation == "Batch":
            return self.batch(request["query"], variables)
        elif operation == "Comments":
            return self.comments(variables)
        else:
            return self.answer(200, {"data": None, "errors": [{"message": "no %s for %s" % (operation, slug)}]})
        self.answer(200, {"data": data})

    def node(self, slug, pr):
        number = pr["number"]
        return {"id": "PR_%s_%d" % (slug, number), "number": number, "title": pr["title"],
                "url": pr.get("url", "https://github.com/%s/pull/%d" % (slug, number)),
                "headRefName": pr["branch"], "headRefOid": pr.get("oid", "oid%d" % number),
                "isDraft": pr.get("draft", False), "updatedAt": pr.get("updated", "2026-01-01T00:00:00Z"),
                "author": {"login": pr["author"]}, "reviewDecision": pr.get("review"),
                "mergeable": pr.get("mergeable", "MERGEABLE"),
                "statusCheckRollup": {"state": pr["checks"]} if pr.get("checks") else None}

    def batch(self, query, variables):
        count = sum(1 for key in variables if re.fullmatch(r"o\d+", key))
        with open(os.path.join(folder, "batches.log"), "a", encoding="utf-8") as log:
            log.write("%s %d\n" % (self.headers.get("Host"), count))
        if count > self.fixture.get("max_batch", count):
            return self.answer(502, {"message": "Server Error"})
        repos, data, errors = self.fixture.get("repos", {}), {}, []
        data["viewer"] = {"login": self.fixture.get("login")}
        data["rateLimit"] = {"limit": 5000, "cost": query_cost(query), "remaining": 4900,
                             "resetAt": "2030-01-01T00:00:00Z"}
        i = 0
        while "o%d" % i in variables:
            slug, alias = "%s/%s" % (variables["o%d" % i], variables["n%d" % i]), "r%d" % i
            if slug in repos:
                data[alias] = {"pullRequests": {"nodes": [self.node(slug, pr) for pr in repos[slug][:50]]},
                               "deployments": {"nodes": self.fixture.get("deployments", {}).get(slug, [])[-30:]}}
            else:
                data[alias] = None
                errors.append({"type": "NOT_FOUND", "path": [alias],
                               "message": "Could not resolve to a Repository with the name '%s'." % slug})
            i += 1
        if "q" in variables:
            found = []
            for slug, number in self.fixture.get("review_requested", []):
                for pr in repos.get(slug, []):
                    if pr["number"] == number:
                        found.append(dict(self.node(slug, pr), repository={"nameWithOwner": slug}))
            data["review"] = {"nodes": found}
        if "a" in variables:
            # The viewer's own open pull requests, in every repository of the fixture.
            author = re.search(r"author:(\S+)", variables["a"])
            data["yours"] = {"nodes": [dict(self.node(slug, pr), repository={"nameWithOwner": slug})
                                       for slug, prs in repos.items() for pr in prs
                                       if author and pr["author"] == author.group(1)][:50]}
        self.answer(200, {"data": data, "errors": errors} if errors else {"data": data})

    def comments(self, variables):
        ids, data = [], {}
        for key, value in sorted(variables.items(), key=lambda kv: int(kv[0][1:])):
            ids.append(value)
            data["c" + key[1:]] = None
            for slug, prs in self.fixture.get("repos", {}).items():
                for pr in prs:
                    if "PR_%s_%d" % (slug, pr["number"]) == value:
                        data["c" + key[1:]] = {"id": value, "comments": {"nodes": [
                            {"author": c["author"] and {"login": c["author"]}, "body": c["body"]}
                            for c in pr.get("comments", [])]}}
        with open(os.path.join(folder, "comments.log"), "a", encoding="utf-8") as log:
            log.write(" ".join(ids) + "\n")
        self.answer(200, {"data": data})


here = os.path.dirname(os.path.abspath(__file__))
schema = os.environ.get("VELMAR_GITHUB_SCHEMA") or os.path.normpath(
    os.path.join(here, "..", "..", "..", "..", "..", "shared", "github-schema", "schema.graphql"))
validator, validator_lock, no_validator = None, threading.Lock(), ""
if not os.path.isfile(schema):
    no_validator = "no GitHub schema at " + schema
elif not os.path.isdir(os.path.join(here, "node_modules", "graphql")):
    no_validator = "the graphql package is not installed (scripts/install-deps)"
else:
    # The reference implementation checks every query against GitHub's own schema.
    validator = subprocess.Popen(["node", os.path.join(here, "validate.js"), schema],
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)


def schema_errors(query):
    """Empty when GitHub's schema accepts the query, else why it does not."""
    if validator is None:
        return no_validator
    with validator_lock:
        validator.stdin.write(json.dumps(query) + "\n")
        validator.stdin.flush()
        answer = validator.stdout.readline().strip()
    return "" if answer == "valid" else answer


def query_cost(query):
    """GitHub's published formula: each connection (a field with first/last) costs one request per node of
    its parent connections, assuming every limit is reached; the sum over 100, rounded, and at least 1."""
    fragments = dict(re.findall(r"fragment\s+(\w+)\s+on\s+\w+\s*(\{(?:[^{}]|\{(?:[^{}]|\{(?:[^{}]|\{[^{}]*\})*\})*\})*\})", query))
    body = re.sub(r"fragment\s+\w+\s+on\s+\w+\s*\{.*", "", query, flags=re.S)
    for _ in range(5):
        body = re.sub(r"\.\.\.(\w+)", lambda m: fragments.get(m.group(1), "{}")[1:-1], body)
    requests, stack, pending = 0, [1], 1
    for token in re.finditer(r"\w+\s*\(([^()]*)\)|\{|\}", body):
        text = token.group(0)
        if text == "{":
            stack.append(pending)
            pending = stack[-1]
        elif text == "}":
            stack.pop()
            pending = stack[-1]
        else:
            limit = re.search(r"\b(?:first|last)\s*:\s*(\d+)", token.group(1))
            if limit:
                requests += stack[-1]
                pending = stack[-1] * int(limit.group(1))
            else:
                pending = stack[-1]
    return max(1, int(round(requests / 100.0)))


folder = sys.argv[1]
cert, key = os.path.join(folder, "cert.pem"), os.path.join(folder, "key.pem")
subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", cert, "-days",
                "2", "-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1"],
               check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(cert, key)
server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
print("PORT %d" % server.server_address[1], flush=True)
server.serve_forever()
