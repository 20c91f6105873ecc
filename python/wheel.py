"""wheel.py OUT VERSION LICENCES FILE...: packs a wheel of the package fendra from these files, which lie
beside each other in it, and prints its path. LICENCES is a list with semicolons: our own, and those of
packages of Debian that are compiled in. It is for the Python that runs this and for systems that
have the libraries of this one; nothing is fetched or compiled."""

import base64
import hashlib
import sys
import sysconfig
import zipfile
from pathlib import Path

METADATA = """Metadata-Version: 2.1
Name: fendra
Version: {version}
Summary: Convolution and deconvolution, with the bits of the program fendra
License: MIT
Requires-Python: >=3.9
Requires-Dist: numpy
"""
WHEEL = """Wheel-Version: 1.0
Generator: fendra
Root-Is-Purelib: false
Tag: {tag}
"""


def main(out, version, licences, *files):
    version = ".".join(str(int(part)) for part in version.split("."))  # 2.00 is 2.0 to Python
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    tag = f"{python}-{python}-{sysconfig.get_platform().replace('-', '_').replace('.', '_')}"
    info = f"fendra-{version}.dist-info"
    contents = {f"fendra/{Path(file).name}": Path(file).read_bytes() for file in sorted(files)}
    ours, *others = licences.split(";")
    contents[f"{info}/LICENSE"] = Path(ours).read_bytes()
    for licence in map(Path, others):  # /usr/share/doc/PACKAGE/copyright
        contents[f"{info}/licences/{licence.parent.name}.txt"] = licence.read_bytes()
    contents[f"{info}/METADATA"] = METADATA.format(version=version).encode()
    contents[f"{info}/WHEEL"] = WHEEL.format(tag=tag).encode()
    record = ""
    for name, data in contents.items():
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).decode().rstrip("=")
        record += f"{name},sha256={digest},{len(data)}\n"
    contents[f"{info}/RECORD"] = f"{record}{info}/RECORD,,\n".encode()

    path = Path(out) / f"fendra-{version}-{tag}.whl"
    path.parent.mkdir(parents=True, exist_ok=True)
    runs = {f"fendra/{Path(file).name}" for file in files if Path(file).stat().st_mode & 0o100}
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as wheel:
        for name, data in contents.items():
            entry = zipfile.ZipInfo(name)  # of the same time always, so that the bytes are the same
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = (0o100755 if name in runs else 0o100644) << 16
            wheel.writestr(entry, data)
    print(path)


main(*sys.argv[1:])
