"""What the checks share: the project's files, the compile commands, remembered results, and how a check reports."""

import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
# What clang-tidy looks at.
TIDIED = ("frameworks/", "src/", "apps/")
FRAMEWORKS = ("zelcore", "zelmediatypes", "zeltransport", "zelmarshal", "zelui", "zelaudiofilterhost")


def build_root():
    return pathlib.Path(os.environ.get("ZEL_BUILD_ROOT", ROOT / "build"))


def build_folder():
    """The build whose compile commands, libraries and test programs are looked at."""
    return build_root() / os.environ.get("ZEL_CHECK_PRESET", "dev")


def project_files(root=ROOT):
    """Paths, relative to `root`, of every file that is or could be committed."""
    # A checkout that belongs to somebody else (containers) is looked at all the same.
    listing = subprocess.run(
        ["git", "-c", "safe.directory=*", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=root, capture_output=True, check=False)
    if listing.returncode == 0:
        names = [name for name in listing.stdout.decode().split("\0") if name]
    else:
        names = [str(path.relative_to(root)) for path in pathlib.Path(root).rglob("*")
                 if path.relative_to(root).parts[0] not in ("build", ".git")]
    return sorted({name for name in names if (pathlib.Path(root) / name).is_file()})


def sources(root=ROOT, endings=(".cpp", ".h")):
    return [name for name in project_files(root) if name.endswith(tuple(endings))]


def belongs_to_other_platform(name):
    # "_none" and "_inaccessible" stand in for what is not there.
    return pathlib.PurePath(name).stem.endswith(("_win32", "_macos", "_none", "_inaccessible"))


@functools.lru_cache
def commands_folder():
    """A build, or one that is configured only, in which each source is compiled by itself and names what it uses."""
    cache = build_folder() / "CMakeCache.txt"
    if not cache.exists():
        sys.exit(f"{cache} is missing: configure that build first")
    if not re.search(r"^ZEL_(UNITY|PCH):BOOL=ON$", cache.read_text(), re.MULTILINE):
        return build_folder()
    folder = build_root() / "checks" / "commands"
    subprocess.run(["cmake", "--preset", build_folder().name, "-B", str(folder), "-DZEL_UNITY=OFF", "-DZEL_PCH=OFF"],
                   cwd=ROOT, stdout=subprocess.DEVNULL, check=True)
    return folder


def compile_commands():
    """One entry per object: file (absolute), output, arguments (list), directory."""
    entries = json.loads((commands_folder() / "compile_commands.json").read_text())
    for entry in entries:
        entry["file"] = os.path.realpath(os.path.join(entry["directory"], entry["file"]))
        if "arguments" not in entry:
            entry["arguments"] = shlex.split(entry["command"])
    return entries


def relative(path, root=ROOT):
    """Path inside the project, or None for one outside."""
    try:
        return str(pathlib.Path(path).relative_to(os.path.realpath(root)))
    except ValueError:
        return None


class Memory:
    """Remembers what passed, by a fingerprint of all that went into it, in a file of the build folder."""

    def __init__(self, name):
        self.path = build_root() / "checks" / f"{name}.json"
        self.hashes = {}
        try:
            self.passed = json.loads(self.path.read_text())
        except (OSError, ValueError):
            self.passed = {}

    def digest(self, path):
        """Content of our own files; size and time of the system's, which are many and change with packages only."""
        path = str(path)
        if path not in self.hashes:
            try:
                if path.startswith("/usr/"):
                    stat = os.stat(path)
                    self.hashes[path] = f"{stat.st_size}:{stat.st_mtime_ns}"
                else:
                    self.hashes[path] = hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()
            except OSError:
                self.hashes[path] = "gone"
        return self.hashes[path]

    def fingerprint(self, extra, paths):
        total = hashlib.sha256(json.dumps(extra).encode())
        for path in sorted(map(str, paths)):
            total.update(f"{path}={self.digest(path)}\n".encode())
        return total.hexdigest()

    def save(self):
        self.path.parent.mkdir(parents=True, exist_ok=True)
        beside = self.path.with_suffix(f".{os.getpid()}")
        beside.write_text(json.dumps(self.passed))
        beside.replace(self.path)


def report(problems, what):
    """Prints the problems and ends the program: 1 when there are any."""
    for problem in problems:
        print(problem)
    if problems:
        print(f"{len(problems)} problem(s): {what}")
    sys.exit(1 if problems else 0)


def write_tree(files):
    """A throw-away folder with these files (name to content), for self-tests."""
    folder = tempfile.TemporaryDirectory(prefix="zelcheck-")
    for name, content in files.items():
        path = pathlib.Path(folder.name) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content)
    return folder


def self_test(cases):
    """Runs (title, problems, expected) cases: `expected` is a text that one problem must contain, or None for no problem
    at all. Ends the program."""
    failures = 0
    for title, problems, expected in cases:
        problems = list(problems)
        good = not problems if expected is None else any(expected in problem for problem in problems)
        if not good:
            failures += 1
            print(f"self-test failed: {title}: expected {expected!r}, got {problems!r}")
    print(f"{len(cases) - failures} of {len(cases)} self-tests passed")
    sys.exit(1 if failures or not cases else 0)
