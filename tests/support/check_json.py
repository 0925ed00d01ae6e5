#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Checks lines of JSON on standard input against the schema in a Markdown file, its first block of JSON.

Exit status 0 if all fit; 1 after a line for each that doesn't."""
import json
import re
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as document:
    schema = json.loads(re.search(r"```json\n(.*?)```", document.read(), re.DOTALL).group(1))
validator = jsonschema.validators.validator_for(schema)
validator.check_schema(schema)

wrong = 0
for line in sys.stdin:
    for error in validator(schema).iter_errors(json.loads(line)):
        deepest = jsonschema.exceptions.best_match([error])
        print(f"{deepest.message} in {line}", file=sys.stderr)
        wrong = 1
sys.exit(wrong)
