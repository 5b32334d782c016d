#!/usr/bin/env python3
"""Fails if the start-up code of a product object reads a global that another product object defines:
such a static is set in link order, which the plug-in's whole-archive link does not keep.
Argument: the folder of the product library's objects."""
import pathlib
import re
import subprocess
import sys

STARTUP = re.compile(r"^(_GLOBAL__sub_I_|__static_initialization_and_destruction_0|__cxx_global_var_init)")


def run(*arguments):
    return subprocess.run(arguments, check=True, capture_output=True, text=True).stdout


def defined_data(obj):
    names = set()
    for line in run("nm", str(obj)).splitlines():
        parts = line.split()
        if len(parts) == 3 and parts[1] in "BDRVu" and not parts[2].startswith("."):
            names.add(parts[2])
    return names


def startup_reads(obj):
    """Symbols that the relocations inside the object's initialisation functions refer to."""
    ranges = {}
    for line in run("objdump", "-t", str(obj)).splitlines():
        parts = line.split()
        if len(parts) >= 5 and STARTUP.match(parts[-1]):
            start, section, size = int(parts[0], 16), parts[-3], int(parts[-2], 16)
            ranges.setdefault(section, []).append((start, start + size))
    reads = set()
    for section, spans in ranges.items():
        for line in run("objdump", "-r", "-j", section, str(obj)).splitlines():
            parts = line.split()
            if len(parts) != 3 or not re.fullmatch(r"[0-9a-f]+", parts[0]):
                continue
            offset = int(parts[0], 16)
            if any(start <= offset < end for start, end in spans):
                reads.add(re.sub(r"[-+]0x[0-9a-f]+$", "", parts[2]))
    return reads


def main():
    folder = pathlib.Path(sys.argv[1])
    objects = sorted(folder.rglob("*.o"))
    if not objects:
        print(f"no objects under {folder}")
        return 1
    owners = {}
    for obj in objects:
        for name in defined_data(obj):
            owners[name] = obj
    faults = 0
    for obj in objects:
        for name in sorted(startup_reads(obj)):
            owner = owners.get(name)
            if owner is not None and owner != obj:
                readable = run("c++filt", name).strip()
                print(f"{obj.relative_to(folder)} is initialised from {readable}, defined in {owner.relative_to(folder)}")
                faults += 1
    if not faults:
        print(f"{len(objects)} objects, no static initialised from another file")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
