"""A real Slurm cluster on this machine: a controller and nodes, in a directory of its own.

As root, each node has namespaces of its own, so that it can lose its power or its network."""

import os
import shutil
import signal
import socket
import subprocess
import time

PROGRAMS = ["slurmctld", "slurmd", "munged", "sbatch", "squeue"]
NAMESPACE_PROGRAMS = ["ip", "nsenter", "unshare"]

CONFIGURATION = """\
ClusterName=veldtrim
SlurmctldHost={host}({address})
SlurmctldPort={port}
SlurmUser={user}
SlurmdUser={user}
AuthType=auth/munge
AuthInfo=socket={directory}/munge.socket,cred_expire=5
StateSaveLocation={directory}/state
SlurmdSpoolDir={directory}/%n
SlurmctldPidFile={directory}/slurmctld.pid
SlurmdPidFile={directory}/%n.pid
SlurmctldLogFile={directory}/slurmctld.log
SlurmdLogFile={directory}/%n.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
SchedulerParameters=sched_interval=2,bf_interval=2
SlurmdParameters=config_overrides
SlurmdTimeout=3
KillWait=2
MinJobAge=600
ReturnToService=2
MaxArraySize={array_size}
MailProg=/bin/true
{nodes}
PartitionName=all Nodes=ALL Default=YES MaxTime=INFINITE State=UP
"""


def missing():
    """What keeps a cluster from being started here, or nothing."""
    for program in PROGRAMS:
        if not shutil.which(program, path=search_path()):
            return f"needs Slurm: {program}"
    return ""


def search_path():
    return os.environ.get("PATH", "") + ":/usr/sbin:/sbin"


class Node:
    def __init__(self, cluster, number):
        self.cluster = cluster
        self.name = f"n{number}"
        self.link = f"vt{os.getpid() % 100_000}-{number}"
        self.process = None

    def address(self):
        return f"10.77.0.{self.name[1:]}" if self.cluster.has_namespaces else "127.0.0.1"

    def line(self):
        return (f"NodeName={self.name} NodeHostname={self.cluster.host} "
                f"NodeAddr={self.address()} Port={self.cluster.port + int(self.name[1:])} "
                "CPUs=2 State=UNKNOWN")

    def connect(self):
        run = self.cluster.run
        run("ip", "netns", "add", self.link)
        run("ip", "link", "add", self.link, "type", "veth", "peer", "name", "eth0",
            "netns", self.link)
        run("ip", "link", "set", self.link, "master", self.cluster.bridge, "up")
        inside = ["nsenter", f"--net=/run/netns/{self.link}"]
        run(*inside, "ip", "address", "add", f"{self.address()}/24", "dev", "eth0")
        run(*inside, "ip", "link", "set", "eth0", "up")
        run(*inside, "ip", "link", "set", "lo", "up")

    def start(self):
        command = ["slurmd", "-D", "-N", self.name, "-f", self.cluster.conf]
        if self.cluster.has_namespaces:
            command = ["nsenter", f"--net=/run/netns/{self.link}", "unshare", "--pid", "--fork",
                       "--kill-child", "--mount", "--mount-proc", "--uts", *command]
        self.process = self.cluster.start(*command)

    def lose_power(self):
        """Ends everything on the node at once."""
        self.process.kill()
        self.process.wait()

    def set_network(self, up):
        self.cluster.run("ip", "link", "set", self.link, "up" if up else "down")


class Cluster:
    def __init__(self, directory, nodes=3, array_size=1001):
        self.directory = directory
        self.host = socket.gethostname().split(".")[0]
        self.port = 20_000 + os.getpid() % 10_000
        self.bridge = f"vt{os.getpid() % 100_000}"
        self.conf = os.path.join(directory, "slurm.conf")
        self.environment = {**os.environ, "PATH": search_path(), "SLURM_CONF": self.conf}
        self.daemons = []
        self.nodes = [Node(self, number + 1) for number in range(nodes)]
        self.has_namespaces = self.make_bridge()
        os.chmod(directory, 0o755)
        for folder in ("state", *(node.name for node in self.nodes)):
            os.mkdir(os.path.join(directory, folder))
        with open(self.conf, "w") as conf:
            conf.write(CONFIGURATION.format(
                host=self.host, port=self.port, directory=directory, array_size=array_size,
                address="10.77.0.254" if self.has_namespaces else "127.0.0.1",
                user=self.output("id", "-un").strip(),
                nodes="\n".join(node.line() for node in self.nodes)))

    def make_bridge(self):
        if os.geteuid() != 0 or not all(shutil.which(each, path=search_path())
                                        for each in NAMESPACE_PROGRAMS):
            return False
        try:
            self.run("ip", "link", "add", self.bridge, "type", "bridge")
            self.run("ip", "address", "add", "10.77.0.254/24", "dev", self.bridge)
            self.run("ip", "link", "set", self.bridge, "up")
            self.has_namespaces = True
            for node in self.nodes:
                node.connect()
        except subprocess.CalledProcessError:
            self.remove_bridge()
            return False
        return True

    def remove_bridge(self):
        for node in self.nodes:
            subprocess.run(["ip", "link", "delete", node.link], capture_output=True)
            subprocess.run(["ip", "netns", "delete", node.link], capture_output=True)
        subprocess.run(["ip", "link", "delete", self.bridge], capture_output=True)

    def run(self, *command):
        subprocess.run(command, env=self.environment, check=True, capture_output=True)

    def output(self, *command):
        return subprocess.run(command, env=self.environment, check=True, capture_output=True,
                              text=True).stdout

    def start(self, *command):
        with open(os.path.join(self.directory, "daemons.log"), "ab") as log:
            process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL,
                                       stdout=log, stderr=log, start_new_session=True)
        self.daemons.append(process)
        return process

    def __enter__(self):
        try:
            self.start_all()
        except BaseException:
            self.__exit__()
            raise
        return self

    def start_all(self):
        place = self.directory
        with open(os.path.join(place, "munge.key"), "wb") as key:
            key.write(os.urandom(128))
        os.chmod(key.name, 0o400)
        self.start("munged", "--force", "--foreground", f"--key-file={place}/munge.key",
                   f"--socket={place}/munge.socket", f"--pid-file={place}/munge.pid",
                   f"--log-file={place}/munge.log", f"--seed-file={place}/munge.seed")
        wait_until(lambda: os.path.exists(f"{place}/munge.socket"))
        self.start_controller()
        for node in self.nodes:
            node.start()
        wait_until(lambda: self.idle_nodes() == len(self.nodes))

    def start_controller(self):
        self.controller = self.start("slurmctld", "-D", "-f", self.conf)

    def idle_nodes(self):
        try:
            states = self.output("sinfo", "--noheader", "--Node", "--format=%T")
        except subprocess.CalledProcessError:
            return 0
        return states.split().count("idle")

    def __exit__(self, *_):
        for process in reversed(self.daemons):
            process.kill()
            process.wait()
        # What the nodes started, where killing a node does not end it.
        subprocess.run(["pkill", "-KILL", "-f", f"slurmstepd.*|slurmd .*{self.conf}"],
                       capture_output=True)
        if self.has_namespaces:
            self.remove_bridge()

    def jobs(self):
        """The states of all jobs of the user, by number and task."""
        lines = self.output("squeue", "--noheader", "--me", "--states=all", "--array",
                            "--format=%F_%K %T %N").splitlines()
        return [line.split() for line in lines]


def wait_until(condition, seconds=60):
    deadline = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < deadline, "waited too long"
        time.sleep(0.05)


__all__ = ["Cluster", "missing", "signal", "wait_until"]
