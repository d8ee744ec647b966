"""When a test with a JACK server is begun again."""
import unittest

import jack


class Tried:
    """A test that fails some times. @param printed by the server, each time"""

    def __init__(self, failures, printed):
        self.failures, self.printed = failures, printed
        self.times = self.set_up = self.cleaned_up = 0

    def log(self, name):
        return self.printed if name == "jackd.log" else ""

    def setUp(self):
        self.set_up += 1

    def doCleanups(self):
        self.cleaned_up += 1

    @jack.again_where_requests_are_lost
    def test(self):
        self.times += 1
        if self.times <= self.failures:
            raise AssertionError("never came")


class AgainTest(unittest.TestCase):
    LOST = "CheckSize error size = 40 Size() = 8\nUnknown request 8\n"

    def test_where_requests_were_lost(self):
        for failures in (0, 1, 2):
            tried = Tried(failures, self.LOST)
            tried.test()
            self.assertEqual((tried.times, tried.set_up, tried.cleaned_up), (failures + 1, failures, failures))

    def test_not_for_ever(self):
        tried = Tried(9, self.LOST)
        self.assertRaises(AssertionError, tried.test)
        self.assertEqual(tried.times, jack.MOST_TIMES)

    def test_not_for_another_failure(self):
        tried = Tried(1, "JackTimedDriver::Process XRun = 92 usec\n")
        self.assertRaises(AssertionError, tried.test)
        self.assertEqual(tried.times, 1)
