"""Faults at every step of a session: first its steps are counted, then the faults are spread over them."""
import collections
import os
import random
import threading
import time
import traceback

import witness as keys
from stage import LATE, Stage, wait_until
from rig.figures import figure

PHASES = ("start", "typing", "question", "end")
TRIES = 3
DESKTOPS = 3  # at a time: most of a death is waiting

Fault = collections.namedtuple("Fault", "name kind phase step")


def is_long():
    return os.environ.get("TAPALONG_LONG") == "1"


def seed():
    """A run is repeated by TAPALONG_SEED, which each run prints."""
    return int(os.environ.get("TAPALONG_SEED", random.randrange(1 << 32)))


class Course:
    """One run of the program: through the session up to a phase, and on into it."""

    def __init__(self, stage):
        self.stage = stage

    def before(self, phase):
        self.stage.start_program()
        if phase == "start":
            return
        self.stage.start_session()
        self.stage.mash_what_stays()
        if phase == "end":
            self.stage.ask_for_the_way_out()
            self.stage.wait_for_the_question()
            self.stage.type_password()
            self.stage.wait_for_rest()

    def into(self, phase):
        """What the child or the parent does in this phase."""
        stage = self.stage
        if phase == "start":
            stage.ask_for_session()
            stage.mash_what_stays_at_once()
        elif phase == "typing":
            stage.witness.type(keys.A, keys.S)
            stage.witness.ask("chord", keys.SHIFT, keys.D)
        elif phase == "question":
            stage.ask_for_the_way_out()
            stage.wait_for_the_question()
            stage.type_password()
        else:
            stage.witness.type(keys.ENTER)

    def count(self, phase):
        """How many steps the phase has."""
        self.before(phase)
        self.stage.point.arm(0, 0)
        self.into(phase)
        if phase == "start":
            self.stage.wait_for_session()
        elif phase == "end":
            wait_until(lambda: not self.stage.witness.says("covered"), "the session's end")
        self.stage.wait_for_rest()
        steps = self.stage.point.count
        self.stage.program.process.kill()
        self.stage.program.process.wait()
        left = self.stage.what_is_left_after(1)
        if left:
            raise AssertionError(f"left after a plain kill: {left}")
        return steps


def spread(faults, number, steps, chance):
    """`number` faults, each of the kinds in `faults` as often as the others, and each evenly over all steps."""
    total = sum(steps.values())
    per_kind = [number // len(faults) + (i < number % len(faults)) for i in range(len(faults))]
    planned = []
    for (name, kind), share in zip(faults, per_kind):
        for i in range(share):
            planned.append(Fault(name, kind, *locate(int((i + chance.random()) * total / share), steps)))
    chance.shuffle(planned)
    return planned


def locate(position, steps):
    for phase, number in steps.items():
        if position < number:
            return phase, position + 1
        position -= number
    raise AssertionError("a position behind the last step")


class Campaign:
    """Runs the faults of a plan on several desktops at a time, and collects what each left."""

    def __init__(self, run):
        self._run = run  # (stage, fault) -> how many steps there were if its own was not, and what is left, in words
        self._lock = threading.Lock()
        self._late = []
        self.failures = []
        self.done = collections.Counter()
        self.missed = collections.Counter()
        self.slowest = collections.Counter()

    def go(self, word, faults, number):
        """`number` faults of these kinds, spread over all steps of a session. Says what came of them."""
        chosen, steps = seed(), count_steps()
        figure(f"{number} {word} over {steps} steps, TAPALONG_SEED={chosen}")
        self._rest = spread(faults, number, steps, random.Random(chosen))
        workers = [threading.Thread(target=self._work) for _ in range(DESKTOPS)]
        for worker in workers:
            worker.start()
        for worker in workers:
            worker.join()
        self._repeat_late_ones()
        table = [f"    {'':32}{'reached':>9}{'missed':>9}{'slowest until nothing was left':>33}"]
        for name, _ in faults:
            table.append(f"    {name:32}{self.done[name]:9}{self.missed[name]:9}{self.slowest[name]:31.2f} s")
        figure("\n".join(table))
        figure(f"{len(self.failures)} with something to complain of")
        for failure in self.failures:
            figure("    " + failure.replace("\n", " "))

    def _next(self):
        with self._lock:
            return self._rest.pop() if self._rest else None

    def _work(self):
        try:
            with Stage() as stage:
                while (fault := self._next()) is not None:
                    self._one(stage, fault)
        except Exception:  # reported, or the thread's silence would pass  pylint: disable=broad-except
            with self._lock:
                self.failures.append(traceback.format_exc())

    def _repeat_late_ones(self):
        """By themselves: how fast is to be measured where nothing else runs."""
        if not self._late:
            return
        figure(f"{len(self._late)} late beside others, and now alone: {self._late}")
        with Stage() as stage:
            for fault in self._late:
                self._one(stage, fault, alone=True)

    def _one(self, stage, fault, alone=False):
        """A fault that was missed ends plainly, which is none of its kind, and is tried again at the last step that
        there was: counts differ by a few."""
        for _ in range(TRIES):
            fewer_steps, left = None, []
            try:
                fewer_steps, left = self._run(stage, fault)
            except AssertionError as error:
                left = [f"the test got lost: {error!r}"]
            if left:
                stage.clear()
            if not alone and len(left) == 1 and left[0].startswith(LATE):
                with self._lock:
                    self._late.append(fault)
                return
            with self._lock:
                self._note(stage, fault, fewer_steps, left)
            if fewer_steps is None:
                return
            fault = fault._replace(step=min(fault.step - 1, fewer_steps))

    def _note(self, stage, fault, fewer_steps, left):
        if left:
            self.failures.append(f"{fault.name} at step {fault.step} of {fault.phase}: " + "; ".join(left))
        if fewer_steps is not None:
            self.missed[fault.name] += 1
        else:
            self.done[fault.name] += 1
            self.slowest[fault.name] = max(self.slowest[fault.name], stage.took or 0)


def reach(stage, fault):
    """Leads the program to the fault. When it has ended its work before that step: after how many."""
    course = Course(stage)
    course.before(fault.phase)
    stage.point.arm(fault.kind, fault.step)
    course.into(fault.phase)
    end = time.monotonic() + 3
    while not stage.point.reached and time.monotonic() < end:
        if fault.phase == "typing":
            stage.witness.type(keys.A)
        time.sleep(0.005)
    if stage.point.reached:
        return None
    steps = stage.point.count
    stage.point.arm(fault.kind, 0)  # or it happens while the program is already leaving
    return steps


def count_steps():
    with Stage() as stage:
        return {phase: Course(stage).count(phase) for phase in PHASES}


def is_stopped(process):
    with open(f"/proc/{process.pid}/stat", encoding="utf-8", errors="replace") as file:
        return file.read().rpartition(")")[2].split()[0] == "T"
