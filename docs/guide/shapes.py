"""A cell whose motion goes through all solutions of one pose, so that a contact sheet shows one shape a picture.

usage: mechanism-cell ik ARM < POSE | shapes.py ARM CELL   (one solution a shape, the order of the solver)
"""
import json
import pathlib
import sys

arm, target = sys.argv[1:]
shapes = {}
for solution in json.loads(sys.stdin.readline())["solutions"]:
    words = " ".join(solution[word] for word in ("shoulder", "elbow", "wrist"))
    shapes.setdefault(words, solution["values_deg"])
cell = {
    "name": "shapes",
    "mechanisms": [{"name": "arm", "kind": "robot", "hash": 1, "model": str(pathlib.Path(arm).resolve())}],
    "systems": [{"robot": "arm"}],
    "key_states": {words: {"robot": "arm", "values_deg": values} for words, values in shapes.items()},
    "motions": [{"name": "shapes", "kind": "joint_steps", "steps_deg": [720] * 6, "states": list(shapes)}],
}
pathlib.Path(target).write_text(json.dumps(cell))
print(", ".join(shapes))
