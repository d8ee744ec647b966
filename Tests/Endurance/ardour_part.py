"""A session of 64 tracks in Ardour, each with an effect of its own settings: loads, plays, exports, closes."""
import array
import math
import os
import pathlib
import re
import subprocess
import sys
from xml.etree import ElementTree

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "ForeignHosts"))
import ardour_program
import bundles
import sounds

TITLE = "a session with 64 instances in Ardour: loaded, played, exported, closed"
PACKAGES = ("hosts",)
TARGETS = ("varno", "Varno-S", "varno_lv2_bundle")

WHOLE_INSTANCES, SHORT_INSTANCES = 64, 8
RATE_HZ = sounds.RATE_HZ
SILENCE_S = 3
# Of sound, and how often its first seconds are played before it is exported. Ardour takes its time on a busy machine.
WHOLE_S, SHORT_S = 10, 2
WHOLE_ROUNDS, SHORT_ROUNDS = 6, 1
PLAYED_S = 2
PATIENCE_S = 3600
# Ardour counts time in these; a sample of any usual rate is a whole number of them.
TICKS_PER_S = 282240000
# The sum of 64 tracks in single precision, against a sum in double precision.
MOST_DIFFERENCE = 1e-5
# Played again and again. Ardour fills the buffers of its tracks in the first two times.
FILLED_AFTER = 2
MOST_GROWTH_KIB = 4096
FIRST_ID = 900000

START = """
AudioEngine:set_backend("None (Dummy)", "", "")
AudioEngine:set_sample_rate(48000)
AudioEngine:set_buffer_size(1024)
assert(AudioEngine:start(false) == 0)

local function memory()
    for line in io.lines("/proc/self/status") do
        local found = line:match("^VmRSS:%s+(%d+) kB")
        if found then return tonumber(found) end
    end
end
"""

MAKE = START + """
local session = create_session(folder, "s", 48000)
local number = 0
for track in session:new_audio_track(2, 2, nil, #settings, "T", ARDOUR.PresentationInfo.max_order,
                                     ARDOUR.TrackMode.Normal, true):iter() do
    number = number + 1
    local effect = ARDOUR.LuaAPI.new_plugin(session, uri, ARDOUR.PluginType.LV2, "")
    assert(not effect:isnil(), "there is no such plug-in")
    assert(track:add_processor_by_index(effect, 0, nil, true) == 0)
    for index, value in ipairs(settings[number]) do
        assert(ARDOUR.LuaAPI.set_processor_param(effect, index - 1, value))
    end
end
assert(session:save_state("") == 0)
print("made", number)
io.stdout:flush()
close_session()
"""

LOAD = START + """
local session = load_session(folder, "s")
"""

USE = LOAD + """
local count = 0
for number, values in ipairs(settings) do
    local effect = session:route_by_name("T " .. number):nth_plugin(0)
    for index, value in ipairs(values) do
        local found = (ARDOUR.LuaAPI.get_processor_param(effect, index - 1, true))
        assert(math.abs(found - value) < 1e-6, "a value that has changed")
    end
    count = count + 1
end
print("loaded", count)
for round = 1, rounds do
    session:request_locate(0, false, ARDOUR.LocateTransportDisposition.MustStop, ARDOUR.TransportRequestSource.TRS_UI)
    ARDOUR.LuaAPI.usleep(500000)
    local before = session:transport_sample()
    session:request_roll(ARDOUR.TransportRequestSource.TRS_UI)
    local waited = 0
    while session:transport_sample() - before < played_frames and waited < patience do
        ARDOUR.LuaAPI.usleep(100000)
        waited = waited + 0.1
    end
    print("played", session:transport_sample() - before)
    session:request_stop(false, false, ARDOUR.TransportRequestSource.TRS_UI)
    ARDOUR.LuaAPI.usleep(500000)
    print("memory", memory())
    io.stdout:flush()
end
close_session()
print("closed")
io.stdout:flush()
"""

# Ardour 7.3 now and then ends in an error after an export, in the same session without any plug-in too: what writes the
# file is freed twice. So it exports in a run of its own, whose file counts alone.
EXPORT = LOAD + """
local export = session:simple_export()
assert(export:set_preset(preset))
export:set_folder(folder)
export:set_name("mix")
export:set_range(0, frames)
assert(export:run_export())
print("exported", frames)
io.stdout:flush()
close_session()
"""
MOST_EXPORTS = 3

# Single precision at the rate of the session, by the format of Ardour's own that does nothing else.
PRESET = "5f5b4f4a-3a5e-4f0d-9d38-6e6a5c3cf0a1"
PRESET_FILE = f"""<?xml version="1.0" encoding="UTF-8"?>
<ExportPreset id="{PRESET}" name="endurance">
  <ExportFormat id="20b4ab09-6452-4cb3-bd66-b921cdbd2942"/>
</ExportPreset>
"""


class Session:
    """The session's folder, the settings of its tracks, and Ardour as a user of the part's own."""

    def __init__(self, work):
        self.work = work
        self.seconds = SHORT_S if work.is_short else WHOLE_S
        self.instances = SHORT_INSTANCES if work.is_short else WHOLE_INSTANCES
        self.rounds = SHORT_ROUNDS if work.is_short else WHOLE_ROUNDS
        self.folder = work.folder / "session"
        # In steps that single precision and decimal text hold; the level of the sum stays near that of one.
        self.settings = [{name: work.random.randrange(2) if name in ardour_program.SWITCHES else work.random.randrange(17) / 16
                          for name in sounds.PARAMETERS} | {"Volume": work.random.randrange(6) / 16}
                         for _ in range(self.instances)]
        release = re.search(r"\d+", ardour_program.program()).group()
        presets = work.folder / f"config/ardour{release}/export"
        presets.mkdir(parents=True)
        (presets / "endurance.preset").write_text(PRESET_FILE)

    def ardour(self, script, name):
        """What a script prints, and Ardour's exit status."""
        rows = ", ".join("{" + ", ".join(map(str, row.values())) + "}" for row in self.settings)
        facts = (f'local uri, folder, preset = "{sounds.STEREO}", "{self.folder}", "{PRESET}"\n'
                 f"local rounds, frames, patience = {self.rounds}, {self.frames}, {PATIENCE_S / 10}\n"
                 f"local played_frames = {PLAYED_S * RATE_HZ}\n"
                 f"local settings = {{{rows}}}\n")
        (self.work.folder / name).write_text(facts + script)
        home = str(self.work.folder)
        with open(self.work.folder / f"{name}.log", "w", encoding="utf-8") as printed:
            done = subprocess.run([ardour_program.program(), name], cwd=home, stdin=subprocess.DEVNULL, stdout=printed,
                                  stderr=subprocess.STDOUT, timeout=PATIENCE_S, check=False,
                                  env={**os.environ, "HOME": home, "XDG_CONFIG_HOME": f"{home}/config",
                                       "XDG_CACHE_HOME": f"{home}/cache", "LV2_PATH": f"{home}/lv2"})
        return (self.work.folder / f"{name}.log").read_text(errors="replace"), done.returncode

    @property
    def frames(self):
        return (SILENCE_S + self.seconds) * RATE_HZ

    @property
    def sound(self):
        """The path of what every track plays."""
        return self.work.folder / "in.wav"

    def make_sound(self):
        """Music after silence, in which what was played before has no influence any more."""
        silence = array.array("f", bytes(4 * SILENCE_S * RATE_HZ))
        music = sounds.make_music(2, self.seconds).channels
        sounds.write_wav(self.sound, sounds.Sound(RATE_HZ, [silence + channel for channel in music]), 32)

    def add_sound(self):
        """Writes into the saved session that every track plays the sound, from the first sample on and without fades."""
        tree = ElementTree.parse(self.folder / "s.ardour")
        sound = sounds.read_wav(self.sound)
        files = next((self.folder / "interchange").iterdir()) / "audiofiles"
        files.mkdir(exist_ok=True)
        region = {"type": "audio", "start": "a0", "length": f"a{sound.frames * TICKS_PER_S // RATE_HZ}@a0",
                  "sync-position": "a0", "channels": "2", "opaque": "1", "layering-index": "0", "stretch": "1",
                  "shift": "1", "scale-amplitude": "1", "first-edit": "nothing"}
        region |= dict.fromkeys(("muted", "locked", "automatic", "whole-file", "import", "external", "hidden",
                                 "envelope-active", "default-fade-in", "default-fade-out", "fade-in-active",
                                 "fade-out-active"), "0")
        for number, channel in enumerate(sound.channels):
            name = f"in%{'LR'[number]}.wav"
            sounds.write_wav(files / name, sounds.Sound(RATE_HZ, [channel]), 32)
            ElementTree.SubElement(tree.find("Sources"), "Source", {
                "name": name, "take-id": "", "type": "audio", "flags": "", "id": str(FIRST_ID + number), "channel": "0",
                "origin": "", "gain": "1"})
            region[f"source-{number}"] = region[f"master-source-{number}"] = str(FIRST_ID + number)
        for number, playlist in enumerate(tree.find("Playlists")):
            ElementTree.SubElement(playlist, "Region", {**region, "name": f"in.{number + 1}",
                                                        "id": str(FIRST_ID + 2 + number)})
        tree.write(self.folder / "s.ardour", "UTF-8", xml_declaration=True)

    def rendered(self, settings):
        """What the program makes of the sound, without the latency."""
        path = self.work.folder / "out.wav"
        options = [word for name, value in settings.items() for word in ("--set", f"{name}={value}")]
        subprocess.run([self.work.program, "render", "--quiet", "--force", "--format", "float", "--compensate", *options,
                        self.sound, path], check=True)
        return sounds.read_wav(path).channels


def sums(tracks):
    """By channel, the sums of the tracks' samples."""
    return [[math.fsum(samples) for samples in zip(*channel)] for channel in zip(*tracks)]


def largest_difference(mix, expected):
    """Of samples, relative to the largest one."""
    peak = max(abs(sample) for channel in expected for sample in channel)
    return max(abs(a - b) for left, right in zip(mix, expected) for a, b in zip(left, right)) / peak


def judge_mix(work, session):
    mix = sounds.read_wav(session.folder / "mix.wav")
    work.check("exported", f"{len(mix.channels)} channels, {mix.frames} frames, {mix.rate_hz} Hz",
               f"2 channels, {session.frames} frames, {RATE_HZ} Hz",
               (len(mix.channels), mix.frames, mix.rate_hz) == (2, session.frames, RATE_HZ))
    tracks = [session.rendered(settings) for settings in session.settings]
    found = largest_difference(mix.channels, sums(tracks))
    work.check("largest difference of the mix from the sum of what the program renders", f"{found:.2g} of the peak",
               f"at most {MOST_DIFFERENCE:g}", found <= MOST_DIFFERENCE)
    other = session.settings[0] | {"Volume": session.settings[0]["Volume"] + 1 / 16}
    found = largest_difference(mix.channels, sums([session.rendered(other), *tracks[1:]]))
    work.check("planted: one effect with a volume of a step more: that difference", f"{found:.2g}",
               f"above {MOST_DIFFERENCE:g}", found > MOST_DIFFERENCE)


def numbers(text, name):
    return [int(number) for number in re.findall(rf"^{name}\s+(\d+)", text, re.M)]


def run(work):
    bundles.link_bundles(work.folder / "lv2", work.build / "lv2/varno-s.lv2")
    session = Session(work)
    session.make_sound()
    text, status = session.ardour(MAKE, "make.lua")
    work.check("made and closed: instances, exit status", f"{sum(numbers(text, 'made'))}, {status}", f"{session.instances}, 0",
               numbers(text, "made") == [session.instances] and status == 0)
    session.add_sound()
    text, status = session.ardour(USE, "use.lua")
    work.check("loaded again with their values: instances", sum(numbers(text, "loaded")), session.instances,
               numbers(text, "loaded") == [session.instances])
    played = numbers(text, "played")
    work.check(f"played {session.rounds} times: seconds each time, at the least", f"{min(played, default=0) / RATE_HZ:.2f}",
               f"{PLAYED_S}", len(played) == session.rounds and min(played) >= PLAYED_S * RATE_HZ)
    memory = numbers(text, "memory")
    work.note("memory of Ardour with them", f"{max(memory, default=0) / 1024:.0f} MiB")
    if len(memory) > FILLED_AFTER:
        growth = memory[-1] - memory[FILLED_AFTER - 1]
        work.check(f"memory added after time {FILLED_AFTER}", f"{growth} KiB", f"at most {MOST_GROWTH_KIB} KiB",
                   growth <= MOST_GROWTH_KIB)
    work.check("closed: exit status", f"{status}", "0", status == 0 and "\nclosed" in text)
    for attempt in range(1, MOST_EXPORTS + 1):
        (session.folder / "mix.wav").unlink(missing_ok=True)
        text, status = session.ardour(EXPORT, "export.lua")
        work.note(f"export {attempt}: exit status of Ardour", f"{status}")
        if status == 0:
            break
    judge_mix(work, session)
