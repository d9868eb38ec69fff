#!/usr/bin/env python3
"""Writes a headless script of the kind a real session sends, for timing.

A start (boot, the three stored files, the search path, browsers, gh status),
then rounds of: timer ticks, pointer hovers over pull requests, a refresh with
one realistic `gh` answer per watched repository (seven tab-separated columns,
the seventh base64 of deploy-bot comments), browser detection answers, file
reads and write confirmations, and now and then a settings change.

Usage: gen_headless_script.py [LINES] > script.jsonl   (default 100000 lines)
The output is the same for the same LINES: the generator is seeded.
"""
import base64
import json
import random
import sys

REPOS = ["acme/web", "acme/api", "acme/docs", "globex/site", "initech/tps-reports"]
AUTHORS = ["ana", "bo", "chen", "dmitri", "eve-bot", "farah"]
WORDS = ("fix add remove refactor bump update the login page cache flaky test dark mode "
         "pagination api client docs typo deps crash on startup retry logic").split()
BOTS = [
    # Vercel-style table with a labelled link
    "[vc]: #abc\n**The latest updates on your projects.**\n\n| Name | Status | Preview |\n"
    "| :--- | :----- | :------ |\n| **{name}** | Ready ([Inspect](https://vercel.com/x)) | "
    "[Visit Preview](https://{name}-git-{branch}-{owner}.vercel.app) |\n",
    # Netlify-style table row
    "### Deploy Preview for *{name}* ready!\n\n| Name | Link |\n|:-:|------------------------|\n"
    "|<span>Latest commit</span>| 1a2b3c |\n| Deploy Preview | [https://deploy-preview-{number}--{name}.netlify.app]"
    "(https://deploy-preview-{number}--{name}.netlify.app) |\n",
    # Railway-style hidden line
    "<!-- [Project Preview](https://{name}-pr-{number}.up.railway.app) -->\n"
    "This PR was deployed to a preview environment.\n",
]


def msg(name, **payload):
    return json.dumps({"msg": name, **payload}, ensure_ascii=False, separators=(",", ":"))


def title(rng):
    return " ".join(rng.choice(WORDS) for _ in range(rng.randint(2, 7))).capitalize()


def gh_answer(rng, slug, first_number):
    owner, name = slug.split("/", 1)
    rows = [slug]
    for i in range(rng.randint(2, 12)):
        number = first_number + i
        branch = rng.choice(["feat", "fix", "chore"]) + "/" + rng.choice(WORDS) + "-" + str(number)
        bodies = []
        for _ in range(rng.randint(0, 2)):
            bodies.append(rng.choice(BOTS).format(name=name, owner=owner, number=number,
                                                   branch=branch.replace("/", "-")))
        blob = base64.b64encode("\x1e".join(bodies).encode()).decode() if bodies else ""
        cols = [str(number), title(rng), rng.choice(AUTHORS), branch,
                "true" if rng.random() < 0.2 else "false",
                f"https://github.com/{slug}/pull/{number}", blob]
        rows.append("\t".join(cols))
    return "\n".join(rows) + "\n"


def boot(home):
    repos = "".join(f"{r}\t\n" for r in REPOS)
    return [
        msg("window_restored", frame={"x": 120, "y": 80.5, "width": 420, "height": 640}),
        msg("boot"),
        msg("home_resolved", home=home),
        msg("file_read", file="settings", contents="auto\t1\nview\tlist\nonboarded\t1\nappearance\tdark\n"),
        msg("file_read", file="browsers", contents="mode\topen\nselected\tFirefox\n"),
        msg("file_read", file="repos", contents=repos),
        msg("path_resolved", path="/usr/local/bin:/usr/bin:/bin"),
        msg("browsers_detected", browsers=[{"app": "Firefox", "running": True},
                                           {"app": "Google Chrome", "running": False}]),
        msg("gh_checked", exit=0),
        msg("brew_probed", installed=False),
        msg("suggestions_fetched", source="owned", output="ana/dotfiles\nacme/web\n", ok=True),
        msg("suggestions_fetched", source="shared", output="\n".join(REPOS) + "\n", ok=True),
    ]


def rounds(rng):
    next_number = 100
    pr_ids = 1
    while True:
        # One refresh: the queue asks for the repositories one at a time, in order.
        yield msg("refresh")
        for slug in REPOS:
            answer = gh_answer(rng, slug, next_number)
            next_number += 20
            yield msg("prs_fetched", output=answer, ok=rng.random() > 0.03)
            pr_ids += answer.count("\n")
        # Between refreshes: mostly ticks and the pointer moving over rows.
        for _ in range(rng.randint(20, 60)):
            r = rng.random()
            if r < 0.35:
                pr = rng.randint(1, pr_ids)
                yield msg("hover_pr", id=pr)
                yield msg("unhover_pr", id=pr)
            elif r < 0.55:
                yield msg("detect_tick")
            elif r < 0.65:
                yield msg("auto_tick")
            elif r < 0.72:
                yield msg("onboarding_tick")
            elif r < 0.80:
                yield msg("browsers_detected", browsers=[
                    {"app": "Firefox", "running": rng.random() < 0.9},
                    {"app": "Google Chrome", "running": rng.random() < 0.5},
                    {"app": "Chromium", "running": False}])
            elif r < 0.86:
                yield msg("file_written", file=rng.choice(["repos", "browsers", "settings"]), ok=True)
            elif r < 0.90:
                yield msg("file_read", file="window", contents="x\t120\ny\t80.5\nwidth\t420\nheight\t640\n")
            elif r < 0.94:
                yield msg("window_moved", frame={"x": rng.randint(0, 800), "y": rng.randint(0, 500),
                                                 "width": 420, "height": 640})
            elif r < 0.97:
                yield msg("set_appearance", appearance=rng.choice(["dark", "light", "system"]))
            else:
                yield msg("open_pr", id=rng.randint(1, pr_ids))


def main():
    total = int(sys.argv[1]) if len(sys.argv) > 1 else 100000
    rng = random.Random(20241123)
    out = sys.stdout
    lines = boot("/home/ana")
    for line in lines[:total]:
        out.write(line + "\n")
    written = min(len(lines), total)
    for line in rounds(rng):
        if written >= total:
            break
        out.write(line + "\n")
        written += 1


if __name__ == "__main__":
    main()
