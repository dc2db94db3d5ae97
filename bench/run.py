#!/usr/bin/env python3
"""Every budget of Glidepath in one report, each with its goal beside it.

Alternating, in one run: (a) Glidepath from process start to the intro on screen, and from the
main window's creation to "[Done Loading Document]" of a local page; (b) bench/bareview from
process start to the same page loaded; (c) bareview again with the same media pieces Glidepath
needs (its intro MP3 played once, a wave sound). Then, with the last of each still running and
the intro music over, the memory (PSS) of each process tree, and Glidepath's processor time over
30 idle seconds with the main window alone and with the browser status window open too.

Then the platform's budgets (bench/drawing, bench/richtext, bench/idle): windowless lines,
batched window drawing, the rich text box with 1 MB of text, the idle screen; and the
accessories' (bench/accessories): the note pad's save per keystroke, the doodle pad's segments.

Usage: python3 bench/run.py [runs]      (after a build; the build directory is ./build)
       python3 bench/run.py start       (start, idle and memory alone)
       python3 bench/run.py drawing     (the drawing and text budgets alone)
       python3 bench/run.py accessories (the note pad's save and the doodle pad's segments)
The thousand-page soak is bench/soak.py.
"""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build")
PROGRAM = os.path.join(BUILD, "Glidepath")
BARE = os.path.join(BUILD, "bench", "bareview")
PAGE = os.path.join(PROGRAM, "Start", "index.html")
IDLE_SECONDS = 30
THEME = os.path.join(PROGRAM, "Default")
MUSIC_SECONDS = 4  # Default/Intro.MP3


def now_ms():
    return time.monotonic() * 1000


SESSION = os.path.join(ROOT, "scripts", "session.sh")


def start_session(work):
    """A virtual screen and sound server of its own (scripts/session.sh), and the environment
    that puts a program on it."""
    subprocess.run(["bash", SESSION, "start", f"{work}/session", "free"], check=True, stdout=subprocess.DEVNULL)
    env = dict(os.environ)
    with open(f"{work}/session/env") as exports:
        for pair in exports.read().split()[1:]:
            key, value = pair.split("=", 1)
            env[key] = value
    return env, f"{work}/session"


def end_session(session):
    subprocess.run(["bash", SESSION, "stop", session], check=False)


def tree(pid):
    """The process and all its descendants."""
    children = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as f:
                    ppid = int(f.read().rsplit(")", 1)[1].split()[1])
                children.setdefault(ppid, []).append(int(entry))
            except OSError:
                pass
    pids, todo = [], [pid]
    while todo:
        p = todo.pop()
        pids.append(p)
        todo.extend(children.get(p, []))
    return pids


def cpu_seconds(pids):
    """Processor time of every thread of the processes, from the scheduler's nanosecond count."""
    total = 0
    for p in pids:
        try:
            for task in os.listdir(f"/proc/{p}/task"):
                with open(f"/proc/{p}/task/{task}/schedstat") as f:
                    total += int(f.read().split()[0])
        except OSError:
            pass
    return total / 1e9


def pss_kib(pids):
    total = 0
    for p in pids:
        try:
            with open(f"/proc/{p}/smaps_rollup") as f:
                for line in f:
                    if line.startswith("Pss:"):
                        total += int(line.split()[1])
        except OSError:
            pass
    return total


def idle_cpu_percent(pid):
    pids = tree(pid)
    before = cpu_seconds(pids)
    time.sleep(IDLE_SECONDS)
    return 100.0 * (cpu_seconds(pids) - before) / IDLE_SECONDS


def wait_line(path, needle, timeout=60):
    """The time stamp of the first line of the log holding needle."""
    deadline = time.monotonic() + timeout
    while time.monotonic() < deadline:
        with open(path, errors="replace") as f:
            for line in f:
                if needle in line:
                    return float(line.split()[1])
        time.sleep(0.02)
    sys.exit(f"bench: gave up waiting for {needle!r} in {path}")


def run_glidepath(env, work, n):
    program = os.path.join(work, f"glidepath-{n}")
    shutil.copytree(PROGRAM, program)
    with open(os.path.join(program, "ThemeDir.INI"), "w") as f:
        f.write(f"[Theme Directory]\r\nDIR={program}/Default\r\n")
    with open(os.path.join(program, "HomePage.TXT"), "w") as f:
        f.write("file://" + PAGE)
    log = os.path.join(work, f"glidepath-{n}.log")
    start = now_ms()
    proc = subprocess.Popen([os.path.join(program, "glidepath")], stderr=open(log, "w"), stdout=subprocess.DEVNULL,
                            env=dict(env, QT_LOGGING_RULES="glidepath.timing=true"))
    intro = wait_line(log, "painted IntroFRM")
    time.sleep(0.5)
    click = now_ms()
    subprocess.run(["xdotool", "mousemove", "640", "512", "click", "1"], env=env, check=True)
    done = wait_line(log, "caption MainFRM Glidepath - [Done Loading Document]")
    created = wait_line(log, "creating MainFRM")
    return proc, log, {"intro": intro - start, "click_to_done": done - click, "load": done - created}


def run_bare(env, work, media=False):
    start = now_ms()
    extra = [os.path.join(THEME, "Intro.MP3"), os.path.join(THEME, "Click.WAV")] if media else []
    proc = subprocess.Popen([BARE, "file://" + PAGE] + extra, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=env,
                            text=True)
    line = proc.stdout.readline()
    return proc, float(line.split()[1]) - start


def stop(proc):
    proc.kill()
    proc.wait()


def open_browser_status(env, log):
    """Tools (the fifth menu), then Browser Status, from the keyboard."""
    main_window = subprocess.run(["xdotool", "search", "--name", "^Glidepath - "], env=env,
                                 capture_output=True, text=True).stdout.split()[0]
    subprocess.run(["xdotool", "windowfocus", "--sync", main_window], env=env, check=True)
    for key in ["alt", "Right", "Right", "Right", "Right", "Down", "Return"]:
        subprocess.run(["xdotool", "key", key], env=env, check=True)
        time.sleep(0.1)
    wait_line(log, "painted BrowserStatusFRM", timeout=10)


def line(label, value, unit="", goal=None):
    goal_text = f"  (goal {goal})" if goal is not None else ""
    print(f"{label:<58}{value:9.2f} {unit}{goal_text}")


def start_idle_memory(runs):
    work = tempfile.mkdtemp(prefix="glidepath-bench-")
    env, session = start_session(work)
    try:
        glide, bare, media = [], [], []
        for n in range(runs):
            last = n == runs - 1
            proc, log, times = run_glidepath(env, work, n)
            glide.append(times)
            if not last:
                stop(proc)
            bproc, loaded = run_bare(env, work)
            bare.append(loaded)
            if not last:
                stop(bproc)
            mproc, loaded = run_bare(env, work, media=True)
            media.append(loaded)
            if not last:
                stop(mproc)

        # Everything settled and the intro music over in both programs that play it.
        time.sleep(MUSIC_SECONDS + 4)
        glide_pss = pss_kib(tree(proc.pid))
        bare_pss = pss_kib(tree(bproc.pid))
        media_pss = pss_kib(tree(mproc.pid))
        stop(bproc)
        stop(mproc)
        main_idle = idle_cpu_percent(proc.pid)
        open_browser_status(env, log)
        time.sleep(2)
        status_idle = idle_cpu_percent(proc.pid)
        stop(proc)
    finally:
        end_session(session)
        shutil.rmtree(work, ignore_errors=True)

    med = statistics.median
    load = med([g["load"] for g in glide])
    print(f"Start, {runs} runs of each alternating, medians in milliseconds")
    line("Glidepath: process start to intro on screen", med([g["intro"] for g in glide]), "ms", "150")
    line("Glidepath: main window made to [Done Loading Document]", load, "ms")
    line("bare view: process start to page loaded", med(bare), "ms")
    line("bare view with the media pieces: start to page loaded", med(media), "ms")
    line("ratio Glidepath's load / bare view's start to loaded", load / med(bare), "", "0.5")
    print(f"Idle, processor time of the whole process tree over {IDLE_SECONDS} s")
    line("main window alone", main_idle, "% of a core", "0.5")
    line("with the browser status window", status_idle, "% of a core", "1.0")
    print("Memory, PSS of the process tree, the intro music over")
    line("Glidepath", glide_pss / 1024, "MiB")
    line("bare view", bare_pss / 1024, "MiB")
    line("bare view with the media pieces", media_pss / 1024, "MiB")
    line("ratio Glidepath / bare view with the media pieces", glide_pss / media_pss, "", "1.05")
    line("ratio Glidepath / bare view", glide_pss / bare_pss, "", "1.1")


def main():
    runs = int(sys.argv[1]) if len(sys.argv) > 1 else 5
    start_idle_memory(runs)
    print_drawing()
    print_drawing(("accessorybench",), timeout=900)


def print_drawing(benches=("drawingbench", "richtextbench", "idlebench"), timeout=300):
    """The platform's drawing and text budgets, from bench/drawing and bench/richtext."""
    work = tempfile.mkdtemp(prefix="glidepath-drawing-")
    env, session = start_session(work)
    try:
        for bench in benches:
            done = subprocess.run([os.path.join(BUILD, "bench", bench)], env=env, capture_output=True,
                                  text=True, timeout=timeout)
            print(done.stdout, end="")
            if done.returncode != 0:
                print(f"{bench}: failed (exit {done.returncode}): {done.stderr.strip()[-500:]}")
    finally:
        end_session(session)
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    if sys.argv[1:] == ["start"]:
        start_idle_memory(5)
    elif sys.argv[1:] == ["drawing"]:
        print_drawing()
    elif sys.argv[1:] == ["accessories"]:
        print_drawing(("accessorybench",), timeout=900)
    else:
        main()
