"""Builds the fuzz targets and runs them, each first over its seeds as they are and then over what is made of them."""

import glob
import os
import pathlib
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
BUILD = PROJECT / "build" / "fuzz"
MILLION = 1_000_000

# How long an input is made, in bytes: enough for whatever the target tells apart, and no longer, so that runs are many.
TARGETS = {"account": 512, "defaults": 256, "http": 1024, "monitor": 2560, "tool": 2048}

# A file of each package that is needed.
PACKAGES = {
    "clang-19": "/usr/bin/clang++-19",
    "libclang-rt-19-dev": "/usr/lib/llvm-19/lib/clang/19/lib/*/libclang_rt.fuzzer*.a",
}

# As on a machine, too large a request for memory is refused and does not end the process by itself.
SANITIZER = "allocator_may_return_null=1:malloc_context_size=2:quarantine_size_mb=4:thread_local_quarantine_size_kb=64"
LIMITS = ("-timeout=10", "-rss_limit_mb=2048", "-malloc_limit_mb=1000000")


def missing_packages():
    return [name for name, file in PACKAGES.items() if not glob.glob(file)]


def build():
    """Builds all targets; raises CalledProcessError with the compiler's words."""
    cache = shutil.which("ccache")
    launcher = [f"-DCMAKE_CXX_COMPILER_LAUNCHER={cache}"] if cache else []
    for command in (["cmake", "--preset", "fuzz", *launcher], ["cmake", "--build", "--preset", "fuzz", "-j2"]):
        subprocess.run(command, cwd=PROJECT, check=True, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def environment():
    memory = pathlib.Path("/dev/shm")
    folder = {"TMPDIR": str(memory)} if os.access(memory, os.W_OK) else {}
    return {**os.environ, **folder, "TZ": "UTC", "ASAN_OPTIONS": SANITIZER}


def command(target, *arguments):
    return [str(word) for word in (BUILD / "tests" / f"fuzz-{target}", *LIMITS, *arguments)]


def try_seeds(target):
    """The command that tries the seeds of a target, whole and unchanged."""
    return command(target, *sorted((HERE / "seeds" / target).iterdir()))


def try_more(target, runs, corpus, *options):
    """The command that makes inputs of the seeds and of the corpus, and tries them."""
    findings = BUILD / "findings"
    findings.mkdir(parents=True, exist_ok=True)
    return command(
        *(target, f"-runs={runs}", f"-max_len={TARGETS[target]}", f"-dict={HERE / target}.dict"),
        *(f"-artifact_prefix={findings}/{target}-", "-print_final_stats=1", *options, corpus, HERE / "seeds" / target),
    )


def main(target=None, runs=MILLION):
    try:
        build()
    except subprocess.CalledProcessError as failed:
        sys.exit(failed.stdout)
    for name in [target] if target else TARGETS:
        corpus = BUILD / "corpus" / name
        corpus.mkdir(parents=True, exist_ok=True)
        for words in (try_seeds(name), try_more(name, runs, corpus)):
            subprocess.run(words, env=environment(), check=True)


if __name__ == "__main__":
    if len(sys.argv) > 3 or sys.argv[1:2] and sys.argv[1] not in TARGETS:
        sys.exit(f"usage: script/fuzz [{'|'.join(TARGETS)} [RUNS]]")
    try:
        main(*sys.argv[1:])
    except subprocess.CalledProcessError as failed:
        sys.exit(failed.returncode)
