"""Runs programs while the window stays alive."""
import os
import signal
import subprocess
import tempfile

from varneltexts import tr

TIME_LIMIT = 120  # seconds
MOST_OUTPUT = 200_000_000  # bytes
_INTERVAL = 0.05  # seconds between two moments at which the window is served


def run(command, directory):
    """Runs a program without input. Returns what it writes to both streams; its output is empty if it does not end."""
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        try:
            process = subprocess.Popen(command, cwd=directory, stdin=subprocess.DEVNULL, stdout=output, stderr=errors,
                                       env={**os.environ, "LC_ALL": "C.UTF-8"}, start_new_session=True)
        except OSError as error:
            return "", str(error)
        try:
            ended = _wait(process, (output, errors))
        finally:  # also after a cancellation
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
        if not ended:
            return "", tr("'{}' was stopped: it took too long or wrote too much.").format(command[0])
        return _text(output), _text(errors)


def _wait(process, streams):
    """False if the program has to be stopped."""
    for _ in range(int(TIME_LIMIT / _INTERVAL)):
        try:
            process.wait(_INTERVAL)
            return True
        except subprocess.TimeoutExpired:
            if any(os.fstat(each.fileno()).st_size > MOST_OUTPUT for each in streams):
                return False
    return False


def _text(stream):
    stream.seek(0)
    return stream.read(MOST_OUTPUT).decode(errors="replace")
