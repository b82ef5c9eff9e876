#!/usr/bin/env python3
"""Checks JSON Lines read from standard input against the tool's JSON Schemas.

Every line must be one JSON object whose "objeto" names a schema of the folder given as the
first argument (objeto.schema.json), and must satisfy it. Exits 0 when all do, 1 otherwise,
telling the first line that does not.
"""
import json
import pathlib
import sys

import jsonschema


def main():
    pasta = pathlib.Path(sys.argv[1])
    esquemas = {}
    for caminho in sorted(pasta.glob("*.schema.json")):
        esquema = json.loads(caminho.read_text(encoding="utf-8"))
        jsonschema.Draft7Validator.check_schema(esquema)
        esquemas[caminho.name[: -len(".schema.json")]] = jsonschema.Draft7Validator(esquema)
    linhas = sys.stdin.buffer.read().decode("utf-8").split("\n")
    if linhas and linhas[-1] == "":
        linhas.pop()
    if not linhas:
        print("nenhum objeto JSON", file=sys.stderr)
        return 1
    for numero, linha in enumerate(linhas, 1):
        try:
            objeto = json.loads(linha)
        except json.JSONDecodeError as erro:
            print(f"linha {numero}: não é JSON: {erro}", file=sys.stderr)
            return 1
        if not isinstance(objeto, dict) or objeto.get("objeto") not in esquemas:
            print(f"linha {numero}: objeto sem esquema: {linha[:200]}", file=sys.stderr)
            return 1
        erros = sorted(esquemas[objeto["objeto"]].iter_errors(objeto), key=str)
        if erros:
            print(f"linha {numero}: {erros[0].message} em {list(erros[0].path)}", file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
