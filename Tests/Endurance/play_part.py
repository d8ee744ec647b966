"""`varno play` for half an hour in short blocks while other work has the processors.

A virtual machine stands still now and then, and a processor for an interrupt, without leaving a thread the time: it counts
as the effect's. So the processors are watched meanwhile, and a late block that is explained by that is none of the
effect's. An effect that always does the same work plays beside it: it shows that such blocks are recognized.
"""
import contextlib
import time

import live
import stalls

TITLE = "live at 32 frames and 48 kHz for half an hour, with stress-ng on two processors beside it"
PACKAGES = ("hosts",)
TARGETS = ("varno", "Slow", "varno_stall_watch")

PERIOD_FRAMES = 32
WHOLE_S, SHORT_S = 30 * 60, 4
# For planted faults: longer than the effect takes on a busy machine, much shorter than the fault.
PLANTED_PERIOD_FRAMES = 256
PLANTED_S = 3
STOPS, STOPPED_S = 3, 0.2
# Of every 32 buffers, Tests/Host/FixtureSlow.h slows down one.
BUFFERS_PER_FAULT = 32
# Until all that is used now and then has been used once.
SETTLED_S = 2
MOST_GROWTH_KIB = 256


def us(number):
    return f"{number:.1f} us"


def times(found):
    return f"p50 {us(found['p50'])}, p99.9 {us(found['p99_9'])}, worst {us(found['worst'])}"


def histogram(found):
    """Blocks by powers of two microseconds."""
    rows, limit = [], 1.0
    for row in found["histogram"]:
        while row["up_to"] > limit:
            limit *= 2
        if rows and rows[-1][0] == limit:
            rows[-1][1] += row["blocks"]
        else:
            rows.append([limit, row["blocks"]])
    return ", ".join(f"up to {limit:g} us {count}" for limit, count in rows)


def slow(work, environment, way):
    """Options and environment of an effect that is slow in a way."""
    module = work.build / "Tests/Host/Slow.aaxplugin"
    return ("--module", module), {**environment, "VARNO_FIXTURE_SLOW": way}


def play_under_load(work):
    """Returns the statistics, those of the steady effect beside it, when the processors stood still, the seconds, and the
    memory added, in KiB."""
    seconds = SHORT_S if work.is_short else WHOLE_S
    with contextlib.ExitStack() as running:
        environment = running.enter_context(live.server(work.folder, PERIOD_FRAMES, live.has_real_time()))
        options, of_steady = slow(work, environment, "steady")
        running.enter_context(live.load(work.folder))
        end_of_watch = running.enter_context(stalls.watch(work))
        steady = running.enter_context(live.play(work, of_steady, *options, name="steady",
                                                 processor=live.PROCESSORS[0]))
        player = running.enter_context(live.play(work, environment))
        started = time.monotonic()
        time.sleep(SETTLED_S)
        before = live.memory_kib(player.process)
        while time.monotonic() < started + seconds:
            time.sleep(1)
            work.progress(f"{time.monotonic() - started:.0f} of {seconds} s")
        growth = live.memory_kib(player.process) - before
        taken = time.monotonic() - started
        return player.statistics(), steady.statistics(), end_of_watch(), taken, growth


def late_ours(found, stops):
    """How many late blocks are the effect's own, and those that are explained by a processor that stood still.

    @param stops when the processors did, as Stalls
    """
    explained = [block for block in found["long_blocks"]
                 if block["cause"] == "ours" and stops.explain(block, found["block_us"])]
    return found["late"]["ours"] - len(explained), explained


def describe(blocks):
    """How many, and how long they were."""
    longest = max((block["took_us"] for block in blocks), default=0)
    return f"{len(blocks)}" + (f", the longest {us(longest)}" if blocks else "")


def judge_late(work, found, steady, stops):
    work.note("the processors stood still for longer than a block lasts", stops.longer_than_us(found["block_us"]))
    ours, explained = late_ours(steady, stops)
    work.note("an effect beside it that does the same in each block: late blocks of its own that this explains",
              f"{describe(explained)}; {ours} others")
    ours, explained = late_ours(found, stops)
    work.check("late blocks: ours", ours, "0", ours == 0)
    work.note("late blocks: the processor stood still", describe(explained))


def judge(work, found, steady, stops, seconds, growth_kib):
    late = found["late"]
    schedule = found["schedule"]
    wanted = seconds * live.RATE_HZ / PERIOD_FRAMES
    work.note("time", f"{seconds:.0f} s: {found['blocks']} blocks of {us(found['block_us'])}")
    work.note("scheduling", f"{schedule['policy']}, priority {schedule['priority']}")
    work.note("processing", times(found["processing_us"]))
    work.note("blocks by the time that they took", histogram(found["processing_us"]))
    work.note("from a block's begin to the call", times(found["waking_us"]))
    # The server of a machine that is too slow for it has less time than others.
    work.check("blocks processed or lost, of those in that time",
               f"{100 * (found['blocks'] + found['lost_blocks']) / wanted:.1f} %", "50 % to 105 %",
               0.5 * wanted < found["blocks"] + found["lost_blocks"] < 1.05 * wanted)
    judge_late(work, found, steady, stops)
    work.note("late blocks: interrupted by other work", late["interrupted"])
    work.note("late blocks: woken late", f"{late['woken_late']}; {found['lost_blocks']} blocks lost")
    work.note("overruns, as the server counts", found["overruns"])
    work.check("memory added", f"{growth_kib} KiB", f"at most {MOST_GROWTH_KIB} KiB", growth_kib <= MOST_GROWTH_KIB)


def play_planted(work, way, meddle=lambda process: time.sleep(PLANTED_S)):
    """Statistics of an effect that is slow in a way, if any, and its late blocks that nothing else explains."""
    with live.server(work.folder, PLANTED_PERIOD_FRAMES, live.has_real_time()) as environment:
        options, environment = slow(work, environment, way) if way else ((), environment)
        with stalls.watch(work) as end_of_watch, live.play(work, environment, *options) as player:
            meddle(player.process)
            found = player.statistics()
            return found, late_ours(found, end_of_watch())[0]


def stop_now_and_then(process):
    for _ in range(STOPS):
        time.sleep(STOPPED_S)
        live.stop_for(process, STOPPED_S)
    time.sleep(STOPPED_S)


def find_planted_faults(work):
    for way, what in (("compute", "an effect that computes for too long"), ("wait", "an effect that waits")):
        found, ours = play_planted(work, way)
        wanted = found["blocks"] // BUFFERS_PER_FAULT
        work.check(f"planted: {what}: late blocks of ours", ours, f"{wanted}, and not none", ours == wanted > 0)
    found, ours = play_planted(work, "", stop_now_and_then)
    # A stop within a block's few microseconds would count as waiting.
    work.check(f"planted: the process stopped {STOPS} times: woken late", found["late"]["woken_late"],
               f"{STOPS - 1} or more", found["late"]["woken_late"] >= STOPS - 1)
    work.check("planted: the process stopped: late blocks of ours", ours, "at most 1", ours <= 1)


def run(work):
    judge(work, *play_under_load(work))
    find_planted_faults(work)
