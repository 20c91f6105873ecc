#!/usr/bin/env bash
# python.sh FOLDER: what a call from Python takes, of the package beside the folder of the program.
set -euo pipefail
PYTHONPATH=$1/../python exec /usr/bin/python3 "$(dirname "$0")/python.py"
