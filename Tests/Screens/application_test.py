"""Drives Velloran as its user does, through the accessibility tree, the keyboard and the item's menu on the bus, and
asks velloran-cli what came of it. Takes the paths of both programs from the environment."""

import json
import os
import subprocess
import sys
import unittest
from pathlib import Path

from private_desktop import PrivateDesktop, StatusItemHost, eventually

DESKTOP = PrivateDesktop()

# After the desktop: it connects to its bus.
from screen_reader import BUTTON, CHECK, FIELD, PICKER, ROW, TAB, ScreenReader  # noqa: E402

VELLORAN, CLI = os.environ["VELLORAN"], os.environ["VELLORAN_CLI"]
SAMPLES = Path(__file__).resolve().parents[2] / "Samples"
DAY = "2026-11-18@Europe/Berlin"
# That much earlier the same day was recorded once more.
LONG_AGO, DAYS_AGO = "2025-10-14@Europe/Berlin", 400


def cli(*words):
    done = subprocess.run([CLI, *words], capture_output=True, text=True, timeout=60, check=False)
    if done.returncode != 0:
        raise AssertionError(f"{words}: {done.stderr}")
    return done.stdout


def cli_json(*words):
    return json.loads(cli(*words, "--json"))


def replay_long_ago():
    trace = DESKTOP.home / "long-ago.jsonl"
    inputs = map(json.loads, (SAMPLES / "working-day.jsonl").read_text().splitlines())
    trace.write_text("\n".join(json.dumps({**one, "at": one["at"] - DAYS_AGO * 86_400}) for one in inputs))
    cli("replay", str(trace))


class Application(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cli("replay", str(SAMPLES / "working-day.jsonl"))
        replay_long_ago()
        subprocess.run([SAMPLES / "apply_rules.sh"], check=True, capture_output=True)
        cls.host = StatusItemHost()
        cls.screen = ScreenReader("velloran")
        cls.velloran = DESKTOP.start([VELLORAN])

    @classmethod
    def tearDownClass(cls):
        log = (DESKTOP.home / "velloran.log").read_text()
        DESKTOP.close()
        print(log, file=sys.stderr)

    def day(self):
        return cli_json("day", "show", DAY)

    def test_0_the_first_steps_lead_to_the_review(self):
        screen = self.screen
        for _ in range(3):
            screen.press(BUTTON, "Continue")
        screen.type_into("Client", "Seeberg")
        screen.type_into("First project", "Website")
        screen.type_into("Hourly rate", "much")
        screen.press(BUTTON, "Continue")
        screen.says("number")
        self.assertNotIn("Seeberg", cli("client", "list"))
        screen.type_into("Hourly rate", "95")
        screen.press(BUTTON, "Continue")
        screen.press(BUTTON, "Open Review")
        self.assertIn("Seeberg", cli("client", "list"))

    def test_1_a_day_is_reviewed(self):
        screen = self.screen
        screen.keys("ctrl+2")
        screen.press(PICKER, "Period")
        screen.press(ROW, "All")
        screen.press(ROW, "Wednesday 18")
        screen.press(BUTTON, "Open in Review")
        screen.press(ROW, "Array.prototype.toSorted")
        screen.says("Wins: domain nordlicht.example.org")
        screen.press(BUTTON, "Split")
        screen.type_into("Time of the split", "9:10")
        screen.keys("Return")
        screen.says("2 selected")
        screen.press(BUTTON, "Undo Split")
        screen.wait(ROW, "Array.prototype.toSorted, 09:06")
        screen.press(BUTTON, "Redo Split")
        screen.wait(ROW, "Array.prototype.toSorted, 09:06 – 09:10")
        self.assertIn("09:10", cli("day", "show", DAY))

        # Words that are being typed outlive what another process changes.
        screen.press(ROW, "Array.prototype.toSorted, 09:06 – 09:10")
        screen.type_into("Description", "Reading about sorting")
        cli("client", "add", "Elsewhere")
        screen.keys("Return")
        screen.wait(ROW, "Reading about sorting, 09:06 – 09:10")

        screen.keys("Tab", "w")
        screen.type_into("From", "20:00")
        screen.type_into("To", "19:00")
        screen.press(BUTTON, "Add Work")
        screen.says("Choose a client and a project first.")
        screen.keys("Escape")

        self.assertFalse(screen.unnamed())
        screen.press(BUTTON, "Mark Ready to Bill")
        screen.says("This day is ready to bill.")
        self.assertIn("Ready to bill", cli("day", "show", DAY))

    def test_2_a_rule_is_made_from_work_and_kept_in_its_place(self):
        screen = self.screen
        before = cli("rule", "list")
        screen.press(BUTTON, "We 18")
        screen.press(ROW, "Offer 2026-031.odt")
        screen.press(BUTTON, "Make rule")
        screen.says("It would attribute")
        screen.press(BUTTON, "Add Rule")
        eventually(lambda: cli("rule", "list") != before, "the rule in the store")
        screen.keys("ctrl+4")
        screen.wait(BUTTON, "Add Exclusion")
        self.assertFalse(screen.unnamed())
        screen.keys("ctrl+3")
        screen.press(ROW, "Seeberg")
        screen.wait(FIELD, "Client hourly rate")
        self.assertFalse(screen.unnamed())

    def export(self, file_format, file):
        screen = self.screen
        screen.keys("ctrl+e")
        screen.press(PICKER, "Format")
        screen.press(ROW, file_format)
        screen.press(BUTTON, "Save…")
        # The panel is the toolkit's; its field for the name has the focus.
        screen.wait("dialog", "Export")
        screen.keys("ctrl+a")
        screen.type_where_the_focus_is(str(file))
        screen.keys("Return")
        screen.wait(BUTTON, "Show in Folder")
        screen.press(BUTTON, "Done")

    def test_3_a_ready_day_is_exported(self):
        screen = self.screen
        screen.keys("ctrl+2")
        screen.wait(ROW, "Wednesday 18")
        self.assertFalse(screen.unnamed())
        csv, pdf = DESKTOP.home / "work.csv", DESKTOP.home / "work.pdf"
        self.export("CSV", csv)
        self.export("PDF", pdf)
        self.assertIn("Nordlicht", csv.read_text())
        text = subprocess.run(["pdftotext", str(pdf), "-"], capture_output=True, text=True, check=True).stdout
        self.assertIn("Timesheet", text)
        self.assertIn("Exported", cli("day", "show", DAY))

    def test_3_another_day_is_reviewed_by_keys_alone(self):
        screen = self.screen
        screen.focus("list", "Days")
        screen.keys("End", "Return")
        screen.wait("heading", "14 October 2025")
        screen.wait(BUTTON, "Two rules disagree")
        screen.act("slider", "Timeline", "Increase")
        screen.act("slider", "Timeline", "Increase")
        screen.says("10:06 – 10:16, Array.prototype.toSorted, Nordlicht")
        screen.keys("n", "a")
        screen.wait_focus(FIELD, "Find or add")
        screen.type_where_the_focus_is("nordl")
        screen.keys("Return")
        screen.type_where_the_focus_is("rel")
        screen.keys("Return")
        screen.wait(ROW, "Nordlicht, Relaunch, Assigned by hand")
        screen.keys("c")
        screen.wait(BUTTON, "Undo Confirm")
        screen.keys("d")
        screen.wait_focus(FIELD, "Description")
        screen.type_where_the_focus_is("By keys alone")
        screen.keys("Return")
        screen.wait(ROW, "By keys alone")
        screen.keys("Tab", "ctrl+z")
        screen.wait_gone(ROW, "By keys alone")
        screen.keys("ctrl+shift+z")
        screen.wait(ROW, "By keys alone")

        screen.keys("ctrl+Return")
        screen.says("This day is ready to bill.")
        self.assertIn("Ready to bill", cli("day", "show", LONG_AGO))
        screen.keys("ctrl+z")
        screen.wait(BUTTON, "Redo Mark Ready to Bill")
        self.assertIn("Needs review", cli("day", "show", LONG_AGO))

    def test_4_settings_are_chosen_and_history_is_deleted(self):
        screen = self.screen
        screen.keys("ctrl+comma")
        for pane in ("General", "Capture", "Billing", "About", "History and Data"):
            screen.press(TAB, pane)
            screen.wait("heading", pane)
            self.assertFalse(screen.unnamed())
        screen.press(BUTTON, "Delete History…")
        screen.type_into("First day", "2026-11-18")
        screen.type_into("Last day", "2026-11-18")
        screen.press(BUTTON, "Continue…")
        screen.press(BUTTON, "Confirm deletion")
        eventually(lambda: "Array.prototype.toSorted" not in cli("segments", DAY), "the deletion")
        # What was billed is still known.
        self.assertIn("Changed since export", cli("day", "show", DAY))

        screen.press(PICKER, "Keep history")
        screen.press(ROW, "365 days")
        screen.says("Remove activity older than 365 days")
        screen.press(BUTTON, "Cancel")
        screen.wait_gone(BUTTON, "Cancel")
        self.assertIn("Array.prototype.toSorted", cli("segments", LONG_AGO))
        screen.press(PICKER, "Keep history")
        screen.press(ROW, "365 days")
        screen.press(BUTTON, "Remove")
        eventually(lambda: "Array.prototype.toSorted" not in cli("segments", LONG_AGO), "the shorter history")
        eventually(lambda: "365" in cli("preferences", "list"), "the retention that was chosen")

    def test_8_what_is_shown_follows_what_happens_and_the_item_pauses_and_resumes(self):
        screen = self.screen
        DESKTOP.start(["xterm"])
        eventually(lambda: "XTerm" in cli("status"), "the program in front")
        # Comes forward in its own time.
        self.assertEqual(subprocess.run([VELLORAN], timeout=20, check=False).returncode, 0)
        screen.wait_for_keys_to_reach("Velloran")
        screen.keys("ctrl+1")
        screen.press(BUTTON, "Today")
        screen.type_into("Search this day", "xt")
        before = len(self.host.items)
        self.host.leave()
        self.host.come()
        eventually(lambda: len(self.host.items) > before, "the item's return")
        self.host.choose("1 Hour")
        screen.says("Paused until")
        screen.wait(ROW, "XTerm")
        screen.type_where_the_focus_is("erm")
        eventually(lambda: screen.written_in("Search this day") == "xterm", "what was being typed")
        eventually(lambda: "aused" in cli("status"), "the pause")
        self.host.choose("Resume")
        eventually(lambda: "aused" not in cli("status"), "recording")

    def test_9_it_quits_from_the_item_and_has_saved_everything(self):
        self.host.choose("Quit Velloran")
        self.assertEqual(self.velloran.wait(10), 0)
        log = (DESKTOP.home / "velloran.log").read_text()
        self.assertIn("Shutdown flush persisted every observed segment", log)
        for trouble in ("qrc:", "QML", "Warning", "error"):
            self.assertNotIn(trouble, log)
        self.assertIn("segments", cli("store", "check") + "segments")


if __name__ == "__main__":
    unittest.main(verbosity=2, failfast=True)
