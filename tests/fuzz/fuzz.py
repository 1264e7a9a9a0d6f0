"""Builds the fuzz targets and runs them, each first over its seeds as they are and then over what is made of them."""

import glob
import os
import pathlib
import re
import shutil
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
BUILD = PROJECT / "build" / "fuzz"
MILLION = 1_000_000
CHOSEN = 19

# How long an input is made, in bytes: enough for whatever the target tells apart, and no longer, so that runs are many.
TARGETS = {"account": 512, "defaults": 256, "http": 1024, "monitor": 2560, "tool": 2048}

# As on a machine, too large a request for memory is refused and does not end the process by itself.
SANITIZER = "allocator_may_return_null=1:malloc_context_size=2:quarantine_size_mb=4:thread_local_quarantine_size_kb=64"
LIMITS = ("-timeout=10", "-rss_limit_mb=2048", "-malloc_limit_mb=1000000")
WORDS = re.compile(rb"[\w.%@-]{2,40}|[^\w\s]{1,4}|\s+")


def compiler():
    """The newest clang++ with libFuzzer, the chosen one before others; nothing where there is none."""
    found = [int(folder.rpartition("-")[2]) for folder in glob.glob("/usr/lib/llvm-*")
             if glob.glob(f"{folder}/lib/clang/*/lib/*/libclang_rt.fuzzer*.a")]
    return f"clang++-{max(found, key=lambda version: (version == CHOSEN, version))}" if found else None


def build():
    """Builds all targets; raises CalledProcessError with the compiler's words."""
    cache = shutil.which("ccache")
    launcher = [f"-DCMAKE_CXX_COMPILER_LAUNCHER={cache}"] if cache else []
    for command in (["cmake", "--preset", "fuzz", f"-DCMAKE_CXX_COMPILER={compiler()}", *launcher],
                    ["cmake", "--build", "--preset", "fuzz", "-j2"]):
        subprocess.run(command, cwd=PROJECT, check=True, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def seeds(target):
    return sorted((HERE / "seeds" / target).iterdir())


def run(target, *arguments, **options):
    """Runs one target with arguments of libFuzzer."""
    env = {**os.environ, "TZ": "UTC", "ASAN_OPTIONS": SANITIZER, "VORNA_TARGET": target}
    if os.access("/dev/shm", os.W_OK):
        env["TMPDIR"] = "/dev/shm"
    return subprocess.run([BUILD / "fuzz", *LIMITS, *map(str, arguments)], env=env, **options)


def try_more(target, runs, corpus, *arguments, **options):
    """Makes inputs of the seeds, of the words in them and of the corpus, and tries them."""
    findings, words = BUILD / "findings", BUILD / f"{target}.dict"
    findings.mkdir(parents=True, exist_ok=True)
    found = {word for seed in seeds(target) for word in WORDS.findall(seed.read_bytes())}
    words.write_text("".join('"' + "".join(f"\\x{byte:02x}" for byte in word) + '"\n' for word in sorted(found)))
    return run(target, f"-runs={runs}", f"-max_len={TARGETS[target]}", f"-dict={words}",
               f"-artifact_prefix={findings}/{target}-", *arguments, corpus, HERE / "seeds" / target, **options)


def main(target=None, runs=MILLION):
    try:
        build()
        for name in [target] if target else TARGETS:
            corpus = BUILD / "corpus" / name
            corpus.mkdir(parents=True, exist_ok=True)
            run(name, *seeds(name), check=True)
            try_more(name, runs, corpus, "-print_final_stats=1", check=True)
    except subprocess.CalledProcessError as failed:
        sys.exit(failed.stdout or failed.returncode)


if __name__ == "__main__":
    if len(sys.argv) > 3 or sys.argv[1:2] and sys.argv[1] not in TARGETS:
        sys.exit(f"usage: script/fuzz [{'|'.join(TARGETS)} [RUNS]]")
    main(*sys.argv[1:])
