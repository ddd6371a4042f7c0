"""A Slurm cluster of machines.Machine's: munged and slurmd on each, munged and slurmctld here."""
import os
import pathlib
import shutil
import subprocess

from machines import run, wait_for

_CONFIGURATION = """
ClusterName=fleet
SlurmctldHost=head
SlurmUser=root
StateSaveLocation={place}/state
SlurmdSpoolDir={place}/spool-%n
SlurmctldPidFile=/run/slurmctld.pid
SlurmdPidFile=/run/slurmd.pid
SlurmctldLogFile={place}/slurmctld.log
SlurmdLogFile={place}/slurmd-%n.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SlurmdParameters=config_overrides
ReturnToService=2
SlurmdTimeout=5
SchedulerType=sched/builtin
SchedulerParameters=sched_interval=1,batch_sched_delay=0
KillWait=1
MailProg=/bin/true
NodeName={nodes} CPUs=2 State=UNKNOWN
PartitionName=fleet Nodes=ALL Default=YES State=UP
"""

# One key for all, and everything else where a machine has its own.
_MUNGE = ("sh", "-c", "mkdir -p /run/munge && exec munged --force --key-file=\"$0\" --socket=/run/munge/munge.socket.2 "
          "--pid-file=/run/munge/pid --seed-file=/run/munge/seed --log-file=/run/munge/log")


class Cluster:
    def __init__(self, place, machines):
        self.place, self.machines = pathlib.Path(place), machines
        self.place.mkdir()
        (self.place / "state").mkdir()
        self.key = self.place / "munge.key"
        self.key.write_bytes(os.urandom(1024))
        self.key.chmod(0o400)
        self.configuration = self.place / "slurm.conf"
        self.configuration.write_text(_CONFIGURATION.format(place=self.place, nodes=",".join(one.name for one in machines)),
                                      encoding="utf-8")
        os.environ["SLURM_CONF"] = str(self.configuration)
        run(*_MUNGE, self.key)
        run("slurmctld", "-f", self.configuration)
        for machine in machines:
            self.join(machine)
        self.wait_for_all()

    def join(self, machine):
        """Starts its daemons, also after it was lost."""
        spool = self.place / f"spool-{machine.name}"
        shutil.rmtree(spool, ignore_errors=True)
        spool.mkdir()
        machine.inside(*_MUNGE, self.key)
        machine.inside("slurmd", "-f", self.configuration, "-N", machine.name)

    def states(self):
        """Of the machines, by their names."""
        text = run("sinfo", "--noheader", "--Node", "--format=%N %t", stdout=subprocess.PIPE, text=True).stdout
        return dict(line.split() for line in text.splitlines())

    def wait_for_all(self):
        wait_for(lambda: set(self.states().values()) == {"idle"}, f"machines of the cluster: {self.place}")

    def tasks(self):
        """States and machines of the tasks that have not ended; those that wait are one."""
        text = run("squeue", "--noheader", "--format=%T %N", "--name=fleet", stdout=subprocess.PIPE, text=True).stdout
        return [line.strip() for line in text.splitlines()]

    def stop(self):
        run("scancel", "--full", "--signal=KILL", "--user=root")
        run("scontrol", "shutdown", "slurmctld")
