"""check_stage.py BUILD: fails unless the target varnel_stage makes every program and library of the staged tree.

A developer's build makes everything anyhow; `./dev run` on a new machine makes that target alone.
"""
import pathlib
import subprocess
import sys

build = pathlib.Path(sys.argv[1])
query = subprocess.run(["ninja", "-C", build, "-t", "query", "varnel_stage"], capture_output=True, text=True, check=True)
made = set(query.stdout.split())
made |= {str((build / name).resolve().relative_to(build.resolve()))  # libraries with a version in their names
         for name in made if (build / name).is_symlink()}
staged = [file.relative_to(build) for folder in ("bin", "lib", "plugins")
          for file in (build / "stage" / folder).iterdir() if file.is_file()]
missing = sorted(str(file) for file in staged if str(file) not in made)
if missing or not staged:
    sys.exit(f"varnel_stage does not make: {', '.join(missing) or 'anything'}")
