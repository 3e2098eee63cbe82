#!/usr/bin/python3
"""`brisel farm` on a real Slurm: one machine, with a configuration, a key and daemons of its own on
loopback, all in a scratch folder and all ended with the test.

usage: slurm_test.py BRISEL [unittest options]
"""

import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

BRISEL = sys.argv.pop(1)
SCENE = """[scene]
size = [640, 360]
frames = 200
[params]
"Intensity" = 20
"Size" = 30
"Maximum number of stars" = 400
"Mix with original" = "Replace"
"""
CONFIGURATION = """ClusterName=test
SlurmctldHost={host}(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/munge
AuthInfo=socket={folder}/munge.socket
SlurmctldPort={ports[0]}
SlurmdPort={ports[1]}
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.pid
SlurmctldLogFile={folder}/slurmctld.log
SlurmdLogFile={folder}/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SwitchType=switch/none
MpiDefault=none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerParameters=sched_min_interval=10000
ReturnToService=2
SlurmdTimeout=300
SlurmdParameters=config_overrides
NodeName=node1 NodeHostname={host} NodeAddr=127.0.0.1 CPUs=2
PartitionName=all Nodes=node1 Default=YES MaxTime=INFINITE State=UP
"""


def free_ports(count):
    sockets = [socket.socket() for _ in range(count)]
    for one in sockets:
        one.bind(("127.0.0.1", 0))
    ports = [one.getsockname()[1] for one in sockets]
    for one in sockets:
        one.close()
    return ports


def wait_until(condition, what, seconds=60):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError(what)
        time.sleep(0.1)


class Cluster:
    """munged, slurmctld and slurmd as children of this process."""

    def __init__(self, folder):
        self.folder = folder
        self.daemons = {}
        user = subprocess.run(["id", "-un"], capture_output=True, text=True,
                              check=True).stdout.strip()
        (folder / "state").mkdir()
        (folder / "spool").mkdir()
        key = folder / "munge.key"
        key.write_bytes(os.urandom(1024))
        key.chmod(0o400)
        configuration = folder / "slurm.conf"
        configuration.write_text(CONFIGURATION.format(
            folder=folder, user=user, host=socket.gethostname(), ports=free_ports(2)))
        os.environ["SLURM_CONF"] = str(configuration)

    def begin(self):
        folder = self.folder
        self.start("munged", "--foreground", "--force", f"--key-file={folder}/munge.key",
                   f"--socket={folder}/munge.socket", f"--pid-file={folder}/munged.pid",
                   f"--log-file={folder}/munged.log", f"--seed-file={folder}/munge.seed")
        wait_until((folder / "munge.socket").exists, "munged does not start")
        self.start("slurmctld", "-D")
        self.start_node()

    def start(self, program, *arguments):
        path = shutil.which(program, path=os.environ["PATH"] + ":/usr/sbin:/sbin")
        with open(self.folder / f"{program}.out", "ab") as log:
            self.daemons[program] = subprocess.Popen([path, *arguments], stdin=subprocess.DEVNULL,
                                                     stdout=log, stderr=log)

    def start_node(self):
        self.start("slurmd", "-D", "-N", "node1")
        wait_until(lambda: tool("sinfo", "-h", "-o", "%T").strip() in ("idle", "mixed", "allocated"),
                   "the node does not come up")

    def stop(self, program):
        daemon = self.daemons.pop(program)
        daemon.terminate()
        try:
            daemon.wait(20)
        except subprocess.TimeoutExpired:
            daemon.kill()
            daemon.wait()

    def stop_all(self):
        for program in ("slurmd", "slurmctld", "munged"):
            if program in self.daemons:
                self.stop(program)


def tool(*command):
    return subprocess.run(command, capture_output=True, text=True, timeout=60).stdout


def renders_in(folder):
    """The numbers of the processes that render chunks there."""
    found = []
    for process in pathlib.Path("/proc").iterdir():
        if not process.name.isdigit():
            continue
        try:
            words = (process / "cmdline").read_bytes().split(b"\0")
            if words[1:2] == [b"render"] and os.readlink(process / "cwd") == str(folder):
                found.append(int(process.name))
        except OSError:
            continue
    return found


class Farm(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = pathlib.Path(tempfile.mkdtemp(prefix="brisel-slurm-"))
        cls.addClassCleanup(shutil.rmtree, cls.root, ignore_errors=True)
        cls.cluster = Cluster(cls.root)
        cls.addClassCleanup(cls.cluster.stop_all)
        cls.cluster.begin()
        cls.one = cls.root / "one"
        cls.one.mkdir()
        (cls.one / "s.toml").write_text(SCENE)
        cls.run_brisel(cls.one, "render", "s.toml", "-o", "f_%03d.png")

    def setUp(self):
        self.folder = self.root / self.id().rpartition(".")[2]
        self.folder.mkdir()
        (self.folder / "s.toml").write_text(SCENE)

    @staticmethod
    def run_brisel(folder, *arguments):
        done = subprocess.run([BRISEL, *arguments], cwd=folder, capture_output=True, text=True,
                              timeout=300)
        if done.returncode != 0:
            raise AssertionError(f"{arguments}: {done.stderr}")
        return done.stderr

    def start_farm(self, *more):
        return subprocess.Popen(
            [BRISEL, "farm", "s.toml", "--engine", "slurm", "-n", "10", "-o", "f_%03d.png", *more],
            cwd=self.folder, stderr=subprocess.PIPE, text=True)

    def finish(self, farm, exit_code=0):
        errors = farm.communicate(timeout=400)[1]
        self.assertEqual(farm.returncode, exit_code, errors)
        return errors

    def pictures(self):
        return sorted(self.folder.glob("f_*.png"))

    def wait_for_pictures(self, count):
        wait_until(lambda: len(self.pictures()) >= count, f"{count} pictures in {self.folder}")

    def a_render(self):
        found = []

        def look():
            found[:] = renders_in(self.folder)
            return found

        wait_until(look, "a chunk is rendered")
        return found[0]

    def check_pictures(self):
        names = [f"f_{number:03}.png" for number in range(200)]
        self.assertEqual(sorted(os.listdir(self.folder)), [*names, "s.toml"])
        for name in names:
            self.assertEqual((self.folder / name).read_bytes(), (self.one / name).read_bytes(),
                             name)

    def test_a_killed_process_and_a_killed_task_are_made_up_for(self):
        farm = self.start_farm()
        self.wait_for_pictures(5)
        os.kill(self.a_render(), signal.SIGKILL)
        self.wait_for_pictures(50)
        status = pathlib.Path(f"/proc/{self.a_render()}/status").read_text()
        os.kill(int(status.split("PPid:")[1].split()[0]), signal.SIGKILL)
        errors = self.finish(farm)
        self.assertIn("f_%03d.png: 200 frames in ", errors)
        self.check_pictures()

    def test_a_lost_node_and_an_interruption_are_made_up_for(self):
        farm = self.start_farm()
        self.wait_for_pictures(20)
        farm.send_signal(signal.SIGINT)
        errors = self.finish(farm, 130)
        self.assertIn("--resume waits for them again", errors)
        tool("scontrol", "update", "nodename=node1", "state=down", "reason=test")
        wait_until(lambda: not renders_in(self.folder), "the tasks end with their node")
        self.assertLess(len(self.pictures()), 200)
        farm = self.start_farm("--resume")
        time.sleep(3)
        tool("scontrol", "update", "nodename=node1", "state=resume")
        # Slurm would wait for two minutes before it starts again what was on a lost node.
        for task in tool("squeue", "-h", "-r", "-t", "PENDING", "-o", "%i").split():
            tool("scontrol", "update", f"jobid={task}", "starttime=now")
        errors = self.finish(farm)
        self.assertIn("frames of \"f_%03d.png\" are there already", errors)
        self.check_pictures()

    def test_jobs_end_without_anyone_waiting(self):
        farm = self.start_farm()
        self.wait_for_pictures(1)
        farm.kill()
        farm.communicate()
        self.wait_for_pictures(200)
        wait_until(lambda: not tool("squeue", "-h").strip(), "the jobs end", 120)
        self.finish(self.start_farm("--resume"))
        self.check_pictures()

    def test_a_clip_is_joined_by_a_job_of_its_own(self):
        errors = self.run_brisel(self.folder, "farm", "s.toml", "--engine", "slurm", "-n", "4",
                                 "-o", "all.mov", "--codec", "png", "--frames", "20-99")
        self.assertIn("all.mov: 80 frames in ", errors)
        self.assertEqual(sorted(os.listdir(self.folder)), ["all.mov", "s.toml"])
        subprocess.run(["ffmpeg", "-v", "error", "-i", "all.mov", "-c", "copy", "c_%03d.png"],
                       cwd=self.folder, check=True)
        for number in (1, 40, 80):
            self.assertEqual((self.folder / f"c_{number:03}.png").read_bytes(),
                             (self.one / f"f_{number + 19:03}.png").read_bytes())

    def test_cancelled_jobs_are_not_begun_again(self):
        farm = self.start_farm()
        self.wait_for_pictures(5)
        tool("scancel", "--name=brisel.f__03d.png.farm")
        self.assertIn("(it was cancelled); --resume goes on", self.finish(farm, 1))
        self.finish(self.start_farm("--resume"))
        self.check_pictures()


if __name__ == "__main__":
    unittest.main()
