#!/usr/bin/env python3
"""Writes the golden scripts whose gh answers carry base64 comment blobs, which
are unreadable by hand: fetch_learns_pattern.in, browser_quits_and_returns.in
and repos_change_during_fetch.in. Run it from this folder, then re-record the
transcripts with VELMAR_RECORD=1 and review the diff."""
import base64
import json


def m(msg_name, **payload):
    return json.dumps({"msg": msg_name, **payload}, ensure_ascii=False, separators=(",", ":"))


def blob(*bodies):
    return base64.b64encode("\x1e".join(bodies).encode()).decode()


def row(n, title, author, branch, draft, slug, comments=None):
    cols = [str(n), title, author, branch, "true" if draft else "false",
            f"https://github.com/{slug}/pull/{n}"]
    if comments is not None:
        cols.append(comments)
    return "\t".join(cols)


def answer(slug, *rows):
    return "\n".join([slug, *rows]) + "\n"


def vercel(url):
    return ("[vc]: #x\n| Name | Status | Preview |\n| :--- | :--- | :--- |\n"
            f"| **web** | Ready | [Visit Preview]({url}) |\n")


def netlify(url):
    return f"### Deploy Preview ready!\n\n| Name | Link |\n|:-:|---|\n| Deploy Preview | [{url}]({url}) |\n"


def railway(url):
    return f"<!-- [Web Preview]({url}) -->\nDeployed to a preview environment.\n"


def write(name, lines):
    with open(name, "w") as f:
        f.write("\n".join(lines) + "\n")


web = "acme/web"
write("fetch_learns_pattern.in", [
    "# One repository, fetched three times: the first answer teaches a preview pattern,",
    "# the second uses it for a pull request without a bot comment.",
    m("home_resolved", home="/home/ana"),
    m("file_read", file="repos", contents="acme/web\t\n"),
    m("path_resolved", path="/usr/bin:/bin"),
    m("prs_fetched", ok=True, output=answer(
        web,
        row(12, "Add login page", "ana", "feat/login", False, web, blob(vercel("https://web-pr-12.example.dev"))),
        row(13, "Fix \\t in titles", "bo", "fix/tabs", True, web,
            blob(netlify("https://web-pr-13.example.dev"), "no link here")),
        row(14, "Bump deps", "renovate", "deps", False, web, ""),
        "15\tA row with five columns\tchen\tx\tfalse",
        row(16, "Broken blob", "eve", "b", False, web, "not*base64"))),
    m("file_written", file="repos", ok=True),
    "# The same pattern again: nothing to save. Number 14 now has its preview from the pattern.",
    m("refresh"),
    m("prs_fetched", ok=True, output=answer(
        web,
        row(14, "Bump deps", "renovate", "deps", False, web),
        row(17, "Docs", "ana", "docs", False, web, blob(railway("https://web-pr-17.example.dev"))))),
    "# A typed pattern wins over the learned one for rows without a comment link.",
    m("navigate", screen="manage"),
    m("edit_pattern", repo_id=1),
    m("edit_text", text="  https://{name}-{branch}.preview.example  "),
    m("save_pattern"),
    "# A failed run empties the rows and marks the repository.",
    m("refresh"),
    m("prs_fetched", ok=False, output=web + "\n"),
])


def detected(*pairs):
    return [{"app": app, "running": running} for app, running in pairs]


write("browser_quits_and_returns.in", [
    "# Open mode follows the running browsers; the stored wish (Firefox) wins when it runs.",
    m("home_resolved", home="/home/ana"),
    m("file_read", file="browsers", contents="mode\topen\nselected\tFirefox\n"),
    m("browsers_detected", browsers=detected(("Safari", True), ("Firefox", True))),
    m("detect_tick"),
    "# Firefox quits: still known, but not running, so Safari takes over.",
    m("browsers_detected", browsers=detected(("Safari", True), ("Firefox", False))),
    "# Firefox disappears from the answer altogether, then comes back with a new id.",
    m("browsers_detected", browsers=detected(("Safari", True))),
    m("browsers_detected", browsers=detected(("Safari", True), ("Firefox", True))),
    "# The user picks Safari: that becomes the wish, and survives Firefox returning.",
    m("select_browser", id=2),
    m("browsers_detected", browsers=detected(("Firefox", True), ("Safari", True))),
    m("browsers_detect_failed"),
    "# Manual mode: polling stops, the shown set decides.",
    m("set_browser_mode", mode="manual"),
    m("detect_tick"),
    m("toggle_browser_shown", id=1),
    m("toggle_browser_shown", id=2),
    m("browsers_detected", browsers=detected(("Firefox", False))),
    m("set_browser_mode", mode="open"),
])

api, docs, site = "acme/api", "acme/docs", "globex/site"
write("repos_change_during_fetch.in", [
    "# Three repositories; the first fetch is in flight while the list changes.",
    m("home_resolved", home="/home/ana"),
    m("path_resolved", path="/usr/bin:/bin"),
    m("file_read", file="repos", contents=f"{web}\t\n{api}\t\thttps://api-pr-{{number}}.example.dev\n{docs}\t\n"),
    "# Added during the fetch: queued behind the others, no second fetch.",
    m("open_add"),
    m("add_text", text=" globex/site\n"),
    m("submit_add"),
    m("pick_suggestion", name="acme/web"),
    "# Moved: the loading repository goes last, the new one first; then the loading one is removed.",
    m("move_repo", id=1, index=99),
    m("move_repo", id=4, index=-5),
    m("remove_repo", id=1),
    "# Its answer arrives for a slug no longer watched: dropped, and the next one starts.",
    m("prs_fetched", ok=True, output=answer(web, row(1, "Gone", "ana", "x", False, web))),
    m("prs_fetched", ok=True, output=answer(" globex/site ", row(3, "Site", "bo", "s", False, site))),
    "# A refresh during a fetch requeues the rest and issues no second fetch.",
    m("refresh"),
    "# The child for acme/api cannot be started: it is marked failed and the queue goes on.",
    m("prs_spawn_failed"),
    m("remove_repo", id=3),
    m("prs_fetched", ok=True, output=answer(site, row(3, "Site", "bo", "s", False, site))),
    m("set_auto", on=True),
    m("auto_tick"),
    m("prs_fetched", ok=True, output=answer(site, row(3, "Site", "bo", "s", False, site), row(5, "Fix", "ana", "f", True, site))),
    m("prs_fetched", ok=True, output=answer(api, row(7, "API v2", "chen", "v2", False, api))),
])
