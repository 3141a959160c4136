#!/usr/bin/env bash
# quorvanectl beside a bare C++ program: from its start to its end and the memory of a verb of each sort, the middle of
# RUNS (200) rounds in turn; then an answer of the running program, on a virtual screen.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=$PWD/${BUILD:-build/linux}
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$work"' EXIT
export HOME="$work" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_STATE_HOME="$work/state"
export XDG_RUNTIME_DIR="$work" XDG_CURRENT_DESKTOP= DBUS_SESSION_BUS_ADDRESS=disabled:
unset WAYLAND_DISPLAY
cat >"$work/bare.cpp" <<'CPP'
#include <iostream>
int main(int, char** words) { std::cout << words[0] << '\n'; }
CPP
g++ -O2 -std=c++20 "$work/bare.cpp" -o "$work/bare"
"$build/quorvanectl" sources add samples --level 0 >/dev/null
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset 3>"$work/display" >/dev/null 2>&1 &
until [ -s "$work/display" ]; do sleep 0.05; done
DISPLAY=:$(cat "$work/display")
export DISPLAY
RUNS=${RUNS:-200} python3 - "$build" "$work/bare" <<'PYTHON'
import glob, os, socket, subprocess, sys, time
build, bare = sys.argv[1:]
runs = int(os.environ["RUNS"])
ctl = build + "/quorvanectl"
verbs = {name: [ctl] + words for name, words in {
    "week": ["week", "2026-11-21"], "criteria": ["criteria", "compile", "hh=3"], "note": ["note", "x"],
    "month": ["month"], "sky": ["sky", "--latitude", "50", "--longitude", "14"], "status": ["status"],
    "settings get": ["settings", "get", "Wallpaper sources\\Wallpaper source #1"],
    "sources list": ["sources", "list"], "scan": ["scan", "samples"]}.items()}
verbs["bare"] = [bare]
times = {name: [] for name in verbs}
quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
for _ in range(runs):
    for name, command in verbs.items():
        begin = time.perf_counter()
        subprocess.run(command, **quiet)
        times[name].append((time.perf_counter() - begin) * 1e3)
middle = {name: sorted(all)[runs // 2] for name, all in times.items()}
for name, command in verbs.items():
    told = subprocess.run(["/usr/bin/time", "-f", "%M", *command], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    memory = int(told.stderr.split()[-1]) / 1024
    print(f"{name:13} {middle[name]:5.2f} ms  {middle[name] / middle['bare']:4.2f} times  {memory:4.1f} MiB")

program = subprocess.Popen([build + "/quorvane"], **quiet)
found = []
while not found:
    found = glob.glob(os.environ["XDG_RUNTIME_DIR"] + "/quorvane/channel-*/*.sock")
    time.sleep(0.05)
def text(word):
    return str(len(word)).encode() + b" " + word.encode()
question = b"\0\1" + b"".join(map(text, ["/", "-", "status", "--json"]))
answers = []
time.sleep(2) # the start is over
for _ in range(100):
    begin = time.perf_counter()
    client = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
    client.connect(found[0])
    client.send(question)
    client.recv(100000)
    answers.append((time.perf_counter() - begin) * 1e3)
    client.close()
    time.sleep(0.02)
print(f"an answer of the running program: {sorted(answers)[50]:.2f} ms, at most {max(answers[1:]):.2f} ms")
program.terminate()
PYTHON
