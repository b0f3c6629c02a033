"""Sees and uses an application only as assistive technology does, and as its user's keyboard does."""

import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from private_desktop import eventually  # noqa: E402

BUTTON, FIELD, ROW, TAB, CHECK, PICKER = "push button", "text", "list item", "page tab", "check box", "combo box"


class ScreenReader:
    def __init__(self, program):
        self.program = program

    def _application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(index)
            if child is not None and child.get_name() == self.program:
                return child
        return None

    def all(self):
        """What is showing, depth first."""
        application = self._application()
        waiting = [application] if application else []
        while waiting:
            node = waiting.pop()
            try:
                states = node.get_state_set()
                if node is not application and not states.contains(Atspi.StateType.SHOWING) \
                        and node.get_role_name() not in ("filler", "panel", "frame", "window"):
                    continue
                yield node
                waiting += [child for child in (node.get_child_at_index(i) for i in
                                                reversed(range(node.get_child_count()))) if child]
            except GLib.Error:
                continue  # it is gone by now

    def find(self, role, name):
        for node in self.all():
            try:
                if node.get_role_name() == role and name in node.get_name():
                    return node
            except GLib.Error:
                continue
        return None

    def wait(self, role, name):
        return eventually(lambda: self.find(role, name), lambda: f"{role} “{name}”; there are: {self.summary()}")

    def wait_gone(self, role, name):
        eventually(lambda: not self.find(role, name), f"the end of {role} “{name}”")

    def focus(self, role, name):
        self.wait(role, name).grab_focus()
        self.wait_focus(role, name)

    def wait_focus(self, role, name):
        def has_focus():
            node = self.find(role, name)
            return node and node.get_state_set().contains(Atspi.StateType.FOCUSED)

        eventually(has_focus, lambda: f"focus on {role} “{name}”; there are: {self.summary()}")

    def says(self, words):
        return eventually(lambda: any(words in self._text(node) for node in self.all()),
                          lambda: f"“{words}”; there is: {self.summary()}")

    @staticmethod
    def _text(node):
        try:
            return f"{node.get_name()} {node.get_description()}"
        except GLib.Error:
            return ""

    def press(self, role, name):
        self.act(role, name, "Press", "Toggle")

    def act(self, role, name, *actions):
        node = self.wait(role, name)

        def enabled():
            return node.get_state_set().contains(Atspi.StateType.ENABLED)

        eventually(enabled, f"{role} “{name}” to be enabled")
        names = [node.get_action_name(index) for index in range(node.get_n_actions())]
        node.do_action(next(index for index, one in enumerate(names) if one in actions))

    def type_into(self, name, words):
        self.focus(FIELD, name)
        self.keys("ctrl+a")
        self.type_where_the_focus_is(words)

    def written_in(self, name):
        field = self.wait(FIELD, name)
        return Atspi.Text.get_text(field, 0, Atspi.Text.get_character_count(field))

    @staticmethod
    def wait_for_keys_to_reach(window):
        """Until the window of that title is the one that has the keyboard."""
        def title():
            asked = subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True,
                                   check=False)
            return asked.stdout.strip()

        eventually(lambda: title() == window, lambda: f"the window “{window}”; in front is “{title()}”")

    @staticmethod
    def type_where_the_focus_is(words):
        subprocess.run(["xdotool", "type", "--delay", "5", words], check=True)

    @staticmethod
    def keys(*names):
        subprocess.run(["xdotool", "key", "--delay", "30", *names], check=True)

    def unnamed(self):
        """Controls that a screen reader could not tell apart."""
        controls = {BUTTON, FIELD, TAB, CHECK, PICKER, ROW, "radio button", "link"}
        return [node.get_role_name() for node in self.all()
                if node.get_role_name() in controls and not node.get_name()]

    def summary(self):
        seen = []
        for node in self.all():
            try:
                if node.get_name():
                    seen.append(f"{node.get_role_name()}: {node.get_name()}")
            except GLib.Error:
                continue
        return "; ".join(seen)[:4000]
