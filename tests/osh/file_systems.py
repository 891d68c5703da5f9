"""Copies and renames on file systems of several kinds, across a power cut, and between users.

    file_systems.py LIBRARY BEFORE_CALLS

BEFORE_CALLS is the library made of before_calls.c. The tests mount file systems that they make in
files, so they need root, and Linux with loop devices and FUSE. Where that is missing the program
says what, and ends with 77. The mounts are in a namespace of their own and end with the program.
"""

import errno
import fcntl
import os
import shutil
import signal
import stat
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest

SKIPPED = 77
NEEDED = ["unshare", "mount", "umount", "losetup", "chattr", "mkfs.ext4", "mkfs.exfat",
          "mount.exfat-fuse"]
NOBODY = 65534
COLLEAGUE = 1000
ACCESS, DEFAULT = "system.posix_acl_access", "system.posix_acl_default"
OLD, NEW = b"old content", b"new content, longer"

# What a child does: one call of the library, as a user and with a mask, whose result it prints.
CALL = """
import ctypes, os, sys
library, user, mask, function, *paths = sys.argv[1:]
function = getattr(ctypes.CDLL(library), function)
os.setgroups([])
os.setgid(int(user)), os.setuid(int(user)), os.umask(int(mask))
print(function(*map(os.fsencode, paths)))
"""


def call(function, *paths, user=0, mask=0o022, before=None):
    """The result of a call, or None if its process was killed. `before` maps names of system calls
    to commands that run before the first of each."""
    environment = dict(os.environ)
    if before:
        environment["LD_PRELOAD"] = BEFORE_CALLS
        environment.update({f"BEFORE_{name}": command for name, command in before.items()})
    ended = subprocess.run([sys.executable, "-I", "-B", "-c", CALL, LIBRARY, str(user), str(mask),
                            function, *paths], env=environment, capture_output=True, timeout=60)
    if ended.returncode == -signal.SIGKILL:
        return None
    if ended.returncode != 0:
        raise AssertionError(ended.stderr.decode())
    return int(ended.stdout)


def put(path, content, mode=0o644):
    with open(path, "wb") as file:
        file.write(content)
    os.chmod(path, mode)


def content(path):
    with open(path, "rb") as file:
        return file.read()


def permissions(path):
    return stat.S_IMODE(os.stat(path).st_mode)


def access_list(owner, group, mask, others, users):
    """A list as the kernel stores it: a version, and entries of tag, permissions and number."""
    none = 0xFFFFFFFF
    entries = [(0x01, owner, none), *((0x02, may, user) for user, may in users.items()),
               (0x04, group, none), (0x10, mask, none), (0x20, others, none)]
    return struct.pack("<I", 2) + b"".join(struct.pack("<HHI", *entry) for entry in entries)


def list_of(path):
    try:
        return os.getxattr(path, ACCESS)
    except OSError as error:
        if error.errno == errno.ENODATA:
            return None
        raise


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, timeout=60).stdout


class Disks(unittest.TestCase):
    """Each test has an empty folder as the current one, and the disks that it makes."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(dir=ROOT)
        os.chmod(self.folder, 0o755)
        os.chdir(self.folder)

    def make_ext4(self, name):
        """Nothing reaches this disk in time but what is sent there."""
        run("truncate", "-s", "8M", f"{name}.image")
        run("mkfs.ext4", "-q", "-F", f"{name}.image")
        self.mount_ext4(name, f"{name}.image")

    def mount_ext4(self, name, image):
        os.mkdir(name)
        run("mount", "-o", "loop,acl,commit=300,noauto_da_alloc", image, name)
        self.addCleanup(run, "umount", "-l", name)

    def make_exfat(self, name):
        """No hard links, no flags of renames, no access lists, no files without names."""
        run("truncate", "-s", "8M", f"{name}.image")
        run("mkfs.exfat", f"{name}.image")
        os.mkdir(name)
        device = run("losetup", "--find", "--show", f"{name}.image").decode().strip()
        try:
            run("mount.exfat-fuse", device, name)
        finally:
            run("losetup", "--detach", device)  # once it is no longer mounted
        self.addCleanup(run, "umount", "-l", name)

    def mounted_after_power_cut(self, image):
        self.mount_ext4("after", image)
        return "after"


class PowerCuts(Disks):
    def test_a_moved_file_is_on_its_new_disk_before_it_leaves_the_old_one(self):
        self.make_ext4("disk")
        put("file", NEW)
        cut = "cp disk.image cut.image"
        moved = call("osh_rename", "file", "disk/file", before={"unlink": cut, "unlinkat": cut})
        self.assertEqual(moved, 0)
        after = self.mounted_after_power_cut("cut.image")
        self.assertEqual(sorted(os.listdir(after)), ["file", "lost+found"])
        self.assertEqual(content(f"{after}/file"), NEW)

    def test_a_copy_over_a_file_is_complete_once_its_name_is_on_the_disk(self):
        self.make_ext4("disk")
        put("source", NEW), put("disk/file", OLD)
        self.assertEqual(call("osh_copyfile", "disk/file", "source"), 1)
        folder = os.open("disk", os.O_RDONLY)
        os.fsync(folder)
        os.close(folder)
        shutil.copyfile("disk.image", "cut.image")
        after = self.mounted_after_power_cut("cut.image")
        self.assertEqual(content(f"{after}/file"), NEW)


class Moves(Disks):
    """To another disk, while somebody else is at work with the same names."""

    def setUp(self):
        super().setUp()
        self.make_ext4("here")
        self.make_ext4("there")
        put("here/file", OLD)

    def test_leave_a_file_that_took_the_old_name_meanwhile(self):
        put("here/newer", NEW)
        moved = call("osh_rename", "here/file", "there/file",
                     before={"copy_file_range": "mv here/newer here/file"})
        self.assertEqual(moved, 0)
        self.assertEqual((content("here/file"), content("there/file")), (NEW, OLD))

    def test_that_cannot_be_completed_remove_their_copy_and_nobody_elses(self):
        run("chattr", "+i", "here/file")
        self.assertEqual(call("osh_rename", "here/file", "there/file"), -1)
        self.assertEqual(os.listdir("there"), ["lost+found"])
        put("there/theirs", NEW)
        replaced = {"unlinkat": "mv there/theirs there/file"}
        self.assertEqual(call("osh_rename", "here/file", "there/file", before=replaced), -1)
        self.assertEqual((content("here/file"), content("there/file")), (OLD, NEW))
        run("chattr", "-i", "here/file")


class KilledCopies(Disks):
    KILL = {"copy_file_range": "kill -9 $PPID"}

    def test_leave_no_name_where_files_can_do_without(self):
        put("source", NEW), put("target", OLD)
        for target in ["target", "another"]:
            self.assertIsNone(call("osh_copyfile", target, "source", before=self.KILL))
        self.assertEqual(sorted(os.listdir()), ["source", "target"])
        self.assertEqual(content("target"), OLD)

    def test_leave_the_name_that_the_header_tells_elsewhere(self):
        self.make_exfat("stick")
        put("stick/source", NEW)
        self.assertIsNone(call("osh_copyfile", "stick/new", "stick/source", before=self.KILL))
        names = set(os.listdir("stick")) - {"source"}
        self.assertEqual(len(names), 1)
        self.assertRegex(names.pop(), r"^\.zelvan-\d+-0$")


class AccessLists(Disks):
    SHARED = access_list(owner=6, group=0, mask=6, others=0, users={COLLEAGUE: 6})

    def setUp(self):
        super().setUp()
        self.make_ext4("here")
        self.make_ext4("there")

    def put_shared(self, path):
        """The group may do nothing with it, though its mode shows the mask in the group's bits."""
        put(path, NEW, 0o600)
        os.setxattr(path, ACCESS, self.SHARED)
        self.assertEqual(permissions(path), 0o660)

    def test_a_copy_over_a_file_keeps_the_list_of_the_file(self):
        put("here/plain", OLD, 0o640)
        self.put_shared("here/shared")
        self.assertEqual(call("osh_copyfile", "here/shared", "here/plain"), 1)
        self.assertEqual((content("here/shared"), list_of("here/shared")), (OLD, self.SHARED))

    def test_a_copy_over_a_file_takes_no_list_from_source_or_folder(self):
        self.put_shared("here/shared")
        put("here/plain", OLD, 0o660)
        os.setxattr("here", DEFAULT, self.SHARED)
        self.assertEqual(call("osh_copyfile", "here/plain", "here/shared"), 1)
        self.assertEqual((content("here/plain"), list_of("here/plain")), (NEW, None))
        self.assertEqual(permissions("here/plain"), 0o660)

    def test_a_copy_to_a_new_name_has_the_rights_of_the_group_not_those_of_the_mask(self):
        self.put_shared("here/shared")
        self.assertEqual(call("osh_copyfile", "here/new", "here/shared"), 1)
        self.assertEqual((permissions("here/new"), list_of("here/new")), (0o600, None))

    def test_a_copy_to_a_new_name_gets_the_list_that_the_folder_gives(self):
        put("here/plain", NEW, 0o660)
        os.setxattr("here", DEFAULT, self.SHARED)
        self.assertEqual(call("osh_copyfile", "here/new", "here/plain"), 1)
        self.assertEqual(list_of("here/new"), self.SHARED)

    def test_a_move_keeps_the_list_of_the_file(self):
        self.put_shared("here/shared")
        put("here/plain", NEW, 0o660)
        os.setxattr("there", DEFAULT, access_list(7, 7, 7, 7, {NOBODY: 7}))
        for name, its_list in [("shared", self.SHARED), ("plain", None)]:
            self.assertEqual(call("osh_rename", f"here/{name}", f"there/{name}"), 0)
            self.assertEqual((content(f"there/{name}"), list_of(f"there/{name}")), (NEW, its_list))
            self.assertEqual(permissions(f"there/{name}"), 0o660)

    def test_a_move_to_where_there_are_no_lists_is_refused(self):
        self.make_exfat("stick")
        self.put_shared("here/shared")
        self.assertEqual(call("osh_rename", "here/shared", "stick/shared"), -1)
        self.assertEqual((content("here/shared"), list_of("here/shared")), (NEW, self.SHARED))
        self.assertEqual(os.listdir("stick"), [])


class WithoutHardLinks(Disks):
    def setUp(self):
        super().setUp()
        self.make_exfat("stick")
        os.makedirs("stick/folder/inner")
        put("stick/file", OLD)
        put("file", NEW)

    def test_files_and_folders_are_renamed_to_free_names_only(self):
        for name in ["file", "folder"]:
            self.assertEqual(call("osh_rename", f"stick/{name}", "stick/new"), 0)
            self.assertEqual(call("osh_rename", "stick/new", f"stick/{name}"), 0)
        for name, other in [("file", "folder"), ("folder", "file"), ("folder", "folder/inner/x")]:
            self.assertEqual(call("osh_rename", f"stick/{name}", f"stick/{other}"), -1)
        self.assertEqual(sorted(os.listdir("stick")), ["file", "folder"])
        self.assertEqual((content("stick/file"), os.listdir("stick/folder")), (OLD, ["inner"]))

    def test_files_move_there_and_back_and_are_copied(self):
        self.assertEqual(call("osh_rename", "file", "stick/file"), -1)
        self.assertEqual(call("osh_rename", "file", "stick/new"), 0)
        self.assertEqual(call("osh_rename", "stick/new", "back"), 0)
        self.assertEqual(call("osh_copyfile", "stick/file", "back"), 1)
        self.assertEqual(call("osh_copyfile", "stick/copy", "stick/file"), 1)
        self.assertEqual((content("back"), content("stick/copy")), (NEW, NEW))
        self.assertEqual(sorted(os.listdir("stick")), ["copy", "file", "folder"])


class Copies(Disks):
    def test_over_what_cannot_be_replaced_are_refused_and_leave_nothing(self):
        put("source", NEW)
        os.makedirs("sticky")
        put("sticky/file", OLD, 0o666)
        os.chmod("sticky", 0o1777)
        put("mounted", OLD), put("elsewhere", OLD)
        run("mount", "--bind", "elsewhere", "mounted")
        self.addCleanup(run, "umount", "-l", "mounted")
        for target, user in [("sticky/file", NOBODY), ("mounted", 0)]:
            self.assertEqual(call("osh_copyfile", target, "source", user=user), 0)
            self.assertEqual(content(target), OLD)
        self.assertEqual(os.listdir("sticky"), ["file"])
        self.assertEqual(sorted(os.listdir()), ["elsewhere", "mounted", "source", "sticky"])

    def test_take_nothing_from_a_device_that_has_taken_the_place_of_the_source(self):
        put("source", NEW), put("target", OLD)
        replaced = {"open": "rm source; ln -s /dev/null source"}
        self.assertEqual(call("osh_copyfile", "target", "source", before=replaced), 0)
        self.assertEqual(content("target"), OLD)

    def test_give_another_group_no_more_than_others_have(self):
        os.mkdir("theirs")
        os.chown("theirs", COLLEAGUE, COLLEAGUE)
        for name, before, after in [("secret", 0o660, 0o600), ("shown", 0o664, 0o644)]:
            put("source", NEW), put(f"theirs/{name}", OLD, before)
            os.chown(f"theirs/{name}", COLLEAGUE, 0)  # a group that they can't give to the copy
            self.assertEqual(call("osh_copyfile", f"theirs/{name}", "source", user=COLLEAGUE), 1)
            self.assertEqual(os.stat(f"theirs/{name}").st_gid, COLLEAGUE)
            self.assertEqual(permissions(f"theirs/{name}"), after)

    def test_work_in_a_folder_whose_path_is_longer_than_the_system_takes(self):
        for _ in range(20):
            os.mkdir("d" * 250)
            os.chdir("d" * 250)
        put("source", NEW), put("target", OLD)
        os.symlink("target", "link")
        self.assertEqual(call("osh_copyfile", "target", "source"), 1)
        self.assertEqual(content("target"), NEW)
        self.assertEqual(call("osh_copyfile", "link", "source"), 0)  # the header says so

    def test_wait_for_others_to_give_up_a_lease(self):
        put("source", NEW)
        held = os.open("source", os.O_WRONLY)

        def give_up(*_):
            fcntl.fcntl(held, fcntl.F_SETLEASE, fcntl.F_UNLCK)

        signal.signal(signal.SIGIO, give_up)
        fcntl.fcntl(held, fcntl.F_SETLEASE, fcntl.F_WRLCK)
        self.assertEqual(call("osh_copyfile", "new", "source"), 1)
        self.assertEqual(content("new"), NEW)
        os.close(held)


class Fifos(Disks):
    def test_keep_their_writers_waiting_for_a_reader(self):
        os.mkfifo("fifo")
        sent = threading.Event()

        def send():
            with open("fifo", "wb", buffering=0) as fifo:
                fifo.write(NEW)
            sent.set()

        threading.Thread(target=send, daemon=True).start()
        time.sleep(0.1)
        self.assertEqual(call("osh_filesize", "fifo"), 0)
        self.assertEqual(call("osh_copyfile", "new", "fifo"), 0)
        put("plain", NEW)
        self.assertEqual(call("osh_copyfile", "fifo", "plain"), 0)
        self.assertEqual(call("osh_rename", "fifo", "other"), 0)
        fifo = os.open("other", os.O_RDONLY | os.O_NONBLOCK)
        self.assertTrue(sent.wait(10))
        self.assertEqual(os.read(fifo, 100), NEW)
        os.close(fifo)


def missing():
    if os.geteuid() != 0:
        return "the rights of root"
    for command in NEEDED:
        if shutil.which(command) is None:
            return command
    for device in ["/dev/loop-control", "/dev/fuse"]:
        if not os.path.exists(device):
            return device
    if subprocess.run(["unshare", "--mount", "true"], capture_output=True).returncode != 0:
        return "the right to mount"
    return None


def main():
    reason = missing()
    if reason is not None:
        print(f"skipped: this needs {reason}")
        return SKIPPED
    with tempfile.TemporaryDirectory() as root:
        os.chmod(root, 0o755)
        inside = ["unshare", "--mount", sys.executable, __file__, *sys.argv[1:3], root]
        return subprocess.run(inside, cwd=root).returncode


if __name__ == "__main__":
    if len(sys.argv) == 3:
        sys.exit(main())
    LIBRARY, BEFORE_CALLS, ROOT = sys.argv[1:]
    unittest.main(argv=sys.argv[:1], verbosity=2)
