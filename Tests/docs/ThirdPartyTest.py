"""The lists of what others wrote name all that is linked, with its notices, beside what is handed on."""
import os
import pathlib
import re
import subprocess
import unittest

BUILD = pathlib.Path(os.environ["VARNO_BUILD"])
BUNDLE = BUILD / "lv2/varno-s.lv2"
CLAP = BUILD / "clap/varno-s"
MODULE = next((BUILD / "Varno-S.aaxplugin/Contents").glob("*-linux")) / "Varno-S.so"
# List -> the binaries that it is about, with the names of their maps.
PROGRAM = BUILD / "Apps/varno"
LISTS = {BUILD / "THIRD-PARTY.txt": {PROGRAM / "varno": "varno", PROGRAM / "varno-window": "varno_window_program",
                                     PROGRAM / "varno-validate": "varno_validate_program", MODULE: "Varno-S"},
         BUNDLE / "THIRD-PARTY.txt": {BUNDLE / "varno-s.so": "varno_lv2", BUNDLE / "varno-s-ui.so": "varno_lv2_window"},
         CLAP / "THIRD-PARTY.txt": {CLAP / "varno-s.clap": "varno_clap"}}
# List -> what the binaries hold without an archive of its own, or with one of the build.
OTHERS = dict(zip(LISTS, ({"VSTGUI", "Highway", "JSON for Modern C++", "KISS FFT", "xxHash", "LV2"}, {"VSTGUI", "Highway", "LV2"},
                          {"VSTGUI", "Highway"})))
# The Python package, where it is built.
for binary in BUILD.glob("python/varno/_varno.*.so"):
    LISTS[BUILD / "THIRD-PARTY.txt"][binary] = "varno_python"
    OTHERS[BUILD / "THIRD-PARTY.txt"].add("pybind11")
# A sentence of each notice.
NOTICES = {"VSTGUI": "Neither the name of the Steinberg Media Technologies nor the names of its",
           "libpugixml.a": "Permission is hereby granted, free of charge, to any person obtaining a",
           "libstdc++.a": "You have permission to propagate a work of Target Code",
           "libgcc.a": "You have permission to propagate a work of Target Code",
           "libgcc_eh.a": "You have permission to propagate a work of Target Code",
           "libc_nonshared.a": "modify it under the terms of the GNU Lesser General Public",
           "Highway": "TERMS AND CONDITIONS FOR USE, REPRODUCTION, AND DISTRIBUTION",
           "JSON for Modern C++": "The above copyright notice and this permission notice shall be included in",
           "KISS FFT": "Redistribution and use in source and binary forms, with or without",
           "xxHash": "Redistribution and use in source and binary forms, with or without modification,",
           "pybind11": "Redistribution and use in source and binary forms, with or without",
           "LV2": "Permission to use, copy, modify, and/or distribute this software for any"}


def linked_archives(name):
    """Names of the archives of others that the linker loaded a part of: it states each part that it loads."""
    text = (BUILD / f"maps/{name}.map").read_text(errors="replace")
    loaded = set(re.findall(r"^LOAD (\S+\.a)$", text, flags=re.MULTILINE))
    used = {path for path in re.findall(r"^(?: \.\S+\s+0x\S+\s+0x\S+\s)(\S+\.a)\(", text, flags=re.MULTILINE)}
    return {os.path.basename(path) for path in loaded & used if path.startswith("/")}


class ThirdPartyTest(unittest.TestCase):
    def test_every_library_that_is_loaded_is_named(self):
        for path, binaries in LISTS.items():
            text = path.read_text()
            for binary in binaries:
                needed = re.findall(r"\(NEEDED\).*\[(.+)\]", subprocess.run(["readelf", "-dW", binary], capture_output=True,
                                                                            text=True, check=True).stdout)
                self.assertIn("libc.so.6", needed)
                for name in needed:
                    self.assertRegex(text, rf"(?m)^  {re.escape(name)} \(package [a-z0-9.+-]+ [0-9][^ ]*\): [A-Za-z]", path)

    def test_every_archive_that_is_linked_has_its_notice(self):
        for path, binaries in LISTS.items():
            found = re.findall(r"^Contained: ([^\n]*)\n\n(.*?)(?=\n\n-{80}\n|\Z)", path.read_text(), flags=re.MULTILINE | re.DOTALL)
            parts = {heading.split(" (")[0]: notice for headings, notice in found for heading in headings.split("; ")}
            archives = set.union(*(linked_archives(name) for name in binaries.values()))
            self.assertIn("libstdc++.a", archives)
            self.assertEqual(set(parts), archives | OTHERS[path], path)
            for name in parts:
                self.assertIn(NOTICES[name], parts[name], path)
                self.assertRegex(parts[name], r"(?i)licen[cs]e", name)

    def test_the_licence_of_varno_s_lies_beside(self):
        self.assertTrue((BUNDLE / "LICENSE").read_text().startswith("MIT License"))


if __name__ == "__main__":
    unittest.main()
