#!/usr/bin/python3
"""Fails on any include in the source tree that reaches a subsystem of the same layer or above.

usage: check_layers.py SRC_DIR LAYER...

Each LAYER names the subsystems of one layer, separated by blanks, from the bottom layer up
("core" "channels vrml" ...). A subsystem is a folder below SRC_DIR; a nested one ("ui/qt")
owns its folder apart from its parent. An include names a subsystem by its first folders
("ui/qt/cViewerHolderWnd.h"); includes of anything else (the standard library, Qt, the public
C headers) are not looked at.
"""
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]')
SOURCES = ('.h', '.hpp', '.c', '.cpp')


def owner(path, subsystems):
    """The subsystem whose folder holds the path, the most deeply nested one if several do."""
    return max((sub for sub in subsystems if path.startswith(sub + '/')), key=len, default=None)


def main(argv):
    if len(argv) < 3:
        sys.exit(__doc__)
    src, layers = argv[1], argv[2:]
    level = {sub: i for i, layer in enumerate(layers) for sub in layer.split()}
    problems = [f'{sub}: named in the layers, but {src}/{sub} is no folder'
                for sub in level if not os.path.isdir(os.path.join(src, sub))]

    files = crossings = 0
    for root, dirs, names in os.walk(src):
        dirs.sort()
        for name in sorted(names):
            if not name.endswith(SOURCES):
                continue
            path = os.path.join(root, name)
            rel = os.path.relpath(path, src).replace(os.sep, '/')
            me = owner(rel, level)
            if me is None:
                problems.append(f'{rel}: in no layer; add its folder to the layers')
                continue
            files += 1
            with open(path, encoding='utf-8', errors='replace') as f:
                for number, line in enumerate(f, 1):
                    match = INCLUDE.match(line)
                    target = owner(match.group(1), level) if match else None
                    if target is None or target == me:
                        continue
                    crossings += 1
                    if level[target] < level[me]:
                        continue
                    way = 'sideways, within its layer' if level[target] == level[me] else 'upward'
                    problems.append(f'{rel}:{number}: {me} includes "{match.group(1)}" of {target}: {way}')

    for p in problems:
        print(p)
    if problems:
        print(f'{len(problems)} include(s) against the layers: ' + ' < '.join(f'[{l}]' for l in layers))
        return 1
    print(f'{files} files, {crossings} includes across subsystems, every one downward')
    return 0


if __name__ == '__main__':
    sys.exit(main(sys.argv))
