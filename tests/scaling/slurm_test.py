#!/usr/bin/env python3
"""Runs the example for Slurm in docs/scaling.md on a cluster of this one machine: slurm_test.py PAGE COMMAND

One task is cancelled while it records, and then run again alone. The merged library is then equal to the one that the
disks make one after the other.
"""
import getpass
import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys
import time

from archive import DISKS, LARGEST, Archive, check, check_same, examples_below

SKIPPED = 77
PROGRAMS = ("munged", "slurmctld", "slurmd", "sbatch", "squeue", "scancel", "sinfo")
CONFIGURATION = """
ClusterName=scaling
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={controller_port}
SlurmdPort={node_port}
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/munge
AuthInfo=socket={state}/munge.socket
CredType=cred/munge
StateSaveLocation={state}/controller
SlurmdSpoolDir={state}/node
SlurmctldPidFile={state}/slurmctld.pid
SlurmdPidFile={state}/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
SwitchType=switch/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerType=sched/builtin
SchedulerParameters=batch_sched_delay=0,sched_min_interval=10000
ReturnToService=2
SlurmdParameters=config_overrides
NodeName={host} NodeAddr=127.0.0.1 CPUs=4 State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES MaxTime=INFINITE State=UP
"""


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


class Cluster:
    """The daemons of a cluster with one node on the loopback address. They run as the user of this process."""

    def __init__(self, archive):
        self.archive = archive
        self.daemons = []
        self.state = archive.path / "slurm"
        for directory in ("controller", "node"):
            (self.state / directory).mkdir(parents=True)
        os.chmod(self.state, 0o755)
        os.chmod(archive.path, 0o755)
        configuration = self.state / "slurm.conf"
        configuration.write_text(CONFIGURATION.format(
            host=socket.gethostname().split(".")[0], user=getpass.getuser(), state=self.state,
            controller_port=free_port(), node_port=free_port()))
        # None of the plugins above uses it; the other choices need a system's own cgroups at the start.
        (self.state / "cgroup.conf").write_text("CgroupPlugin=cgroup/v1\n")
        archive.environment["SLURM_CONF"] = str(configuration)
        key = self.state / "munge.key"
        key.write_bytes(os.urandom(128))
        key.chmod(0o600)

    def start(self):
        self._run("munged", "--foreground", "--force", f"--key-file={self.state}/munge.key",
                  f"--socket={self.state}/munge.socket", f"--pid-file={self.state}/munged.pid",
                  f"--seed-file={self.state}/munged.seed", f"--log-file={self.state}/munged.log")
        self._wait(lambda: (self.state / "munge.socket").exists())
        self._run("slurmctld", "-D", "-i", "-L", str(self.state / "slurmctld.log"))
        self._run("slurmd", "-D", "-L", str(self.state / "slurmd.log"))
        self._wait(lambda: self.archive.run("sinfo --noheader --format=%t", expected=None).strip() == "idle")

    def _run(self, *words):
        path = os.pathsep.join([self.archive.environment["PATH"], "/usr/sbin", "/sbin"])
        program = shutil.which(words[0], path=path)
        self.daemons.append(subprocess.Popen([program, *words[1:]], env=self.archive.environment,
                                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))

    def _wait(self, is_ready):
        end = time.monotonic() + 20
        while not is_ready():
            if time.monotonic() > end or any(daemon.poll() is not None for daemon in self.daemons):
                logs = "".join(f"{log}:\n{log.read_text()[-3000:]}" for log in sorted(self.state.glob("*.log")))
                raise RuntimeError(f"the cluster does not start:\n{logs}")
            time.sleep(0.1)

    def submit(self, line):
        """Submits a job with a line of the page, and returns its number."""
        return re.search(r"Submitted batch job (\d+)", self.archive.run(line)).group(1)

    def wait_for(self, job):
        while self.archive.run(f"squeue --noheader --job={job}", expected=None).strip():
            time.sleep(0.2)

    def stop(self):
        self.archive.run("scancel --quiet --user=$(id -un)", expected=None)
        for daemon in reversed(self.daemons):
            daemon.terminate()
            try:
                daemon.wait(10)
            except subprocess.TimeoutExpired:
                daemon.kill()
                daemon.wait()


def main():
    page, command = sys.argv[1:]
    path = os.pathsep.join([os.environ["PATH"], "/usr/sbin", "/sbin"])
    missing = [program for program in PROGRAMS if shutil.which(program, path=path) is None]
    if missing:
        print(f"missing: {', '.join(missing)}")
        return SKIPPED
    script, submit, again = examples_below(page, "## On a cluster: a Slurm array")
    archive = Archive(command)
    cluster = Cluster(archive)
    try:
        cluster.start()
        (archive.path / "convert.sh").write_text(script)
        job = cluster.submit(submit)
        while not archive.has_begun(LARGEST):
            check(archive.run(f"squeue --noheader --job={job}", expected=None).strip(), "the job ended too early")
            time.sleep(0.01)
        task = sorted(DISKS).index(LARGEST)
        archive.run(f"scancel {job}_{task}")
        cluster.wait_for(job)
        shards = {shard.stem for shard in (archive.path / "shards").glob("*.zellib")}
        check(shards == set(DISKS) - {LARGEST}, f"shards without the cancelled task: {shards}")
        check("--array=17 " in again, "the page runs another task again")
        cluster.wait_for(cluster.submit(again.replace("17", str(task))))
        archive.run(examples_below(page, "## Merging")[0])
        archive.make_single_library()
        check_same(archive.path / "all.zellib", archive.path / "single.zellib")
        check({report.stem for report in (archive.path / "reports").iterdir()} == set(DISKS), "a report is missing")
        check(not list(archive.temporary.glob("tmp.*")), "a task has left its directory")
    finally:
        cluster.stop()
        archive.remove()
    return 0


if __name__ == "__main__":
    sys.exit(main())
