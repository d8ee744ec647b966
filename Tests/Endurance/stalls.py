"""When processors stood still, and which late blocks that explains."""
import bisect
import contextlib
import re
import time

import live

# In seconds, until what was begun last has come to its end.
SETTLED_S = 0.1
US_PER_NS = 1e-3


class Stalls:
    """For each processor, when it stood still: times in nanoseconds of the monotonic clock, in order."""

    def __init__(self, text=""):
        self.spans = {}
        for processor, began, ended in re.findall(r"^(\d+) (\d+) (\d+)$", text, re.M):
            self.spans.setdefault(int(processor), []).append((int(began), int(ended)))

    def longer_than_us(self, length_us):
        """How often, in words: for each processor."""
        counts = {processor: sum(ended - began > length_us / US_PER_NS for began, ended in spans)
                  for processor, spans in sorted(self.spans.items())}
        return ", ".join(f"processor {processor}: {count}" for processor, count in counts.items()) or "not known"

    def within_ns(self, processor, began, ended):
        """How long the processor stood still in this time."""
        spans = self.spans.get(processor, [])
        first = max(0, bisect.bisect(spans, (began, began)) - 1)
        total = 0
        for start, end in spans[first:]:
            if start >= ended:
                break
            total += max(0, min(end, ended) - max(start, began))
        return total

    def explain(self, block, length_us):
        """Whether a long block is done in time on a processor that does not stand still.

        @param block one of those that `varno play --json` lists, of a thread that stays on its processor
        """
        if block["waits"] or block["page_faults"]:
            return False  # what it asked of the system may take long
        took_ns = round(block["took_us"] / US_PER_NS)
        stood_ns = self.within_ns(block["processor"], block["began_ns"], block["began_ns"] + took_ns)
        return (took_ns - stood_ns) * US_PER_NS <= length_us


@contextlib.contextmanager
def watch(work):
    """A function that ends watching and returns the Stalls. Without real-time scheduling, none are known."""
    if not live.has_real_time():
        yield Stalls
        return
    log, printed = work.folder / "watch.log", work.folder / "watch.txt"
    with live.running(work.folder, log.name, work.build / "Tests/Endurance/varno_stall_watch",
                      output=printed.name) as process:
        def watches():
            if process.poll() is not None:
                raise RuntimeError(f"varno_stall_watch has ended: {log.read_text()}")
            return "watching" in printed.read_text()

        def end():
            time.sleep(SETTLED_S)
            if live.end(process) != 0:
                raise RuntimeError(f"varno_stall_watch has ended: {log.read_text()}")
            return Stalls(printed.read_text())

        live.eventually(watches, "the watch over the processors")
        yield end
