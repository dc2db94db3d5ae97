#!/usr/bin/env python3
"""The thousand-page soak: the real Glidepath follows 1,000 navigations through pages of a
loopback server, each page with text, an image and a script; the script moves on to the next
page 100 ms after the page has loaded (faster, the engine throttles a page that navigates more
than twenty times a second, to keep a runaway script from hanging the browser).

Passes when the program neither crashes nor hangs (every page is asked for within 30 seconds of
the one before) and the memory (PSS) of its process tree after the 1,000th page is within 10%
of its value after the 50th. The growth over the second half tells a cache that has filled
(none) from a leak (as much as in the first). The bare view (bench/bareview) then follows the
same pages, as the baseline. Prints the figures; exits non-zero on a failure.

Usage: python3 bench/soak.py [pages]   (after a build; the build directory is ./build)
"""
import http.server
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import threading
import time
import zlib

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import run  # noqa: E402  (the bench's session, process tree and memory helpers)

PAGES = int(sys.argv[1]) if len(sys.argv) > 1 else 1000
FIRST_MEASURE = 50
STALL_SECONDS = 30
GROWTH_GOAL = 0.10


def png(width, height, seed):
    """A small picture of its own for every page, so that none comes from the cache."""
    rows = b"".join(b"\0" + bytes(((x * 7 + y * 3 + seed) % 256) for x in range(width * 3)) for y in range(height))
    chunk = lambda kind, data: (struct.pack(">I", len(data)) + kind + data +
                                struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


class Pages(http.server.BaseHTTPRequestHandler):
    requested = []  # page numbers, in the order they were asked for
    lock = threading.Lock()

    def do_GET(self):
        kind, _, rest = self.path.strip("/").partition("/")
        n = int(rest.split(".")[0]) if rest.split(".")[0].isdigit() else 0
        if kind == "page":
            with Pages.lock:
                Pages.requested.append(n)
            body = (f"<html><head><title>Soak page {n}</title><script src='/script/{n}.js'></script></head>"
                    f"<body><h1>Page {n}</h1><p>{'Text to lay out. ' * 40}</p>"
                    f"<img src='/image/{n}.png' width='160' height='120'></body></html>").encode()
            kind_type = "text/html"
        elif kind == "image":
            body, kind_type = png(64, 48, n), "image/png"
        elif kind == "script":
            body = (f"window.addEventListener('load', function () {{"
                    f" setTimeout(function () {{ location.href = '/page/{n + 1}'; }}, 100); }});").encode()
            kind_type = "application/javascript"
        else:
            self.send_error(404)
            return
        self.send_response(200)
        self.send_header("Content-Type", kind_type)
        self.send_header("Content-Length", str(len(body)))
        self.send_header("Cache-Control", "no-store")
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *args):
        pass


def wait_for_page(proc, n):
    """Waits until page n is asked for; False when the program died or stalled."""
    last_count, last_change = -1, time.monotonic()
    while True:
        with Pages.lock:
            count = len(Pages.requested)
            reached = Pages.requested and Pages.requested[-1] >= n
        if reached:
            return True
        if proc.poll() is not None:
            print(f"soak: the program ended (status {proc.returncode}) after {count} pages")
            return False
        if count != last_count:
            last_count, last_change = count, time.monotonic()
        elif time.monotonic() - last_change > STALL_SECONDS:
            print(f"soak: no page asked for in {STALL_SECONDS} s after {count} pages")
            return False
        time.sleep(0.05)


def processes(pid):
    """PSS in MiB of each process of the tree, by its kind."""
    kinds = []
    for p in run.tree(pid):
        try:
            with open(f"/proc/{p}/cmdline") as f:
                args = f.read().split("\0")
        except OSError:
            continue
        kind = next((a[len("--type="):] for a in args if a.startswith("--type=")), os.path.basename(args[0]))
        kinds.append(f"{kind} {run.pss_kib([p]) / 1024:.1f}")
    return ", ".join(kinds)


def failed(env, log):
    shot = os.path.join(run.BUILD, "soak-failure.png")
    subprocess.run(["import", "-window", "root", shot], env=env)
    print(f"soak: the screen is in {shot}; the program's last lines:")
    print(open(log, errors="replace").read()[-3000:])
    return 1


def follow(proc, env, log):
    """Follows the pages from 0; the tree's PSS after the first measure and after the last."""
    with Pages.lock:
        Pages.requested.clear()
    if not wait_for_page(proc, FIRST_MEASURE):
        return None
    time.sleep(1)
    early, early_kinds, early_at = run.pss_kib(run.tree(proc.pid)), processes(proc.pid), time.monotonic()
    if not wait_for_page(proc, PAGES // 2):
        return None
    half = run.pss_kib(run.tree(proc.pid))
    if not wait_for_page(proc, PAGES):
        return None
    time.sleep(1)
    late, late_kinds = run.pss_kib(run.tree(proc.pid)), processes(proc.pid)
    with Pages.lock:
        missing = [n for n in range(PAGES + 1) if n not in set(Pages.requested)]
    return {"early": early, "half": half, "late": late, "early_kinds": early_kinds, "late_kinds": late_kinds,
            "per_page": 1000 * (time.monotonic() - early_at) / (PAGES - FIRST_MEASURE), "missing": len(missing)}


def report(name, r):
    growth = r["late"] / r["early"] - 1
    print(f"{name}: pages skipped                    {r['missing']:8d}")
    print(f"{name}: per page, {FIRST_MEASURE} to {PAGES}           {r['per_page']:8.1f} ms")
    print(f"{name}: PSS of the tree after page {FIRST_MEASURE:<5d}{r['early'] / 1024:8.1f} MiB ({r['early_kinds']})")
    print(f"{name}: PSS of the tree after page {PAGES:<5d}{r['late'] / 1024:8.1f} MiB ({r['late_kinds']})")
    print(f"{name}: growth                           {100 * growth:8.1f} %")
    # Caches fill early and then stay; a leak goes on growing in the second half as in the first.
    print(f"{name}: growth over the second half      {100 * (r['late'] / r['half'] - 1):8.1f} % "
          f"(page {PAGES // 2}: {r['half'] / 1024:.1f} MiB)")
    return growth


def main():
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Pages)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    first = f"http://127.0.0.1:{server.server_port}/page/0"
    work = tempfile.mkdtemp(prefix="glidepath-soak-")
    env, session = run.start_session(work)
    procs = []
    try:
        program = os.path.join(work, "glidepath")
        shutil.copytree(run.PROGRAM, program)
        with open(os.path.join(program, "ThemeDir.INI"), "w") as f:
            f.write(f"[Theme Directory]\r\nDIR={program}/Default\r\n")
        with open(os.path.join(program, "HomePage.TXT"), "w") as f:
            f.write(first)
        log = os.path.join(work, "glidepath.log")
        started = time.monotonic()
        proc = subprocess.Popen([os.path.join(program, "glidepath")], stderr=open(log, "w"), stdout=subprocess.DEVNULL,
                                env=dict(env, QT_LOGGING_RULES="glidepath.timing=true"))
        procs.append(proc)
        run.wait_line(log, "painted IntroFRM")
        time.sleep(0.5)
        subprocess.run(["xdotool", "mousemove", "640", "512", "click", "1"], env=env, check=True)
        glide = follow(proc, env, log)
        if glide is None:
            return failed(env, log)
        glide_seconds = time.monotonic() - started
        run.stop(proc)

        # The baseline: the bare view through the same pages.
        bare_log = os.path.join(work, "bareview.log")
        bare = subprocess.Popen([run.BARE, first], stdout=subprocess.DEVNULL, stderr=open(bare_log, "w"), env=env)
        procs.append(bare)
        baseline = follow(bare, env, bare_log)
        if baseline is None:
            return failed(env, bare_log)

        print(f"Glidepath: pages followed without a crash or a hang {PAGES} in {glide_seconds:.0f} s")
        growth = report("Glidepath", glide)
        report("bare view", baseline)
        print(f"Glidepath's growth {100 * growth:.1f} %  (goal at most {100 * GROWTH_GOAL:.0f})")
        return 0 if growth <= GROWTH_GOAL and not glide["missing"] else 1
    finally:
        for p in procs:
            if p.poll() is None:
                run.stop(p)
        run.end_session(session)
        server.shutdown()
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
