"""The workflows of the hosted CI: well-formed, complete in structure, and true of this source tree."""
import re
import subprocess
import unittest
from pathlib import Path

import yaml

SOURCE = Path(__file__).resolve().parents[2]
FILES = sorted((SOURCE / ".github/workflows").iterdir())
WORKFLOWS = {file.name: yaml.safe_load(file.read_text()) for file in FILES}

WORKFLOW_KEYS = {"name", True, "permissions", "jobs"}  # YAML 1.1 reads "on" as true
JOB_KEYS = {"name", "needs", "runs-on", "container", "timeout-minutes", "permissions", "env", "steps", "uses"}
STEP_KEYS = {"name", "uses", "with", "run", "shell", "env", "if"}
EVENTS = {"push", "pull_request", "workflow_call"}
CONTEXTS = r"(github\.(token|ref_name)|hashFiles\('[^']+'(, '[^']+')*\))"


def jobs():
    for file, workflow in WORKFLOWS.items():
        for name, job in workflow["jobs"].items():
            yield file, name, job


def steps():
    for file, name, job in jobs():
        for step in job.get("steps", []):
            yield file, name, step


class Workflows(unittest.TestCase):
    def test_are_two_and_pass_the_linter(self):
        self.assertEqual(list(WORKFLOWS), ["build.yml", "release.yml"])
        subprocess.run(["yamllint", "--strict", "--config-file", SOURCE / ".yamllint", *FILES], check=True)

    def test_have_known_keys(self):
        for file, workflow in WORKFLOWS.items():
            self.assertEqual(set(workflow), WORKFLOW_KEYS, file)
            self.assertLessEqual(set(workflow[True]), EVENTS, file)
            self.assertEqual(workflow["permissions"], {"contents": "read"}, file)
        for file, name, job in jobs():
            self.assertLessEqual(set(job), JOB_KEYS, (file, name))
            if "uses" in job:
                self.assertTrue((SOURCE / job["uses"]).is_file(), job["uses"])
                self.assertIn("workflow_call", WORKFLOWS[Path(job["uses"]).name][True])
            else:
                self.assertLessEqual({"runs-on", "timeout-minutes", "steps"}, set(job), (file, name))

    def test_have_steps_that_do_one_thing(self):
        for file, name, step in steps():
            self.assertLessEqual(set(step), STEP_KEYS, (file, name))
            self.assertIn("name", step)
            self.assertEqual(len({"uses", "run"} & set(step)), 1, step["name"])
            if "uses" in step:
                self.assertRegex(step["uses"], r"^actions/(checkout|cache|(up|down)load-artifact)@v\d+$")

    def test_wait_for_jobs_that_are_there(self):
        for file, name, job in jobs():
            if "needs" in job:
                self.assertIn(job["needs"], WORKFLOWS[file]["jobs"], (file, name))

    def test_fetch_what_another_step_keeps(self):
        kept = {step["with"]["name"] for _, _, step in steps() if "upload-artifact" in step.get("uses", "")}
        fetched = {step["with"]["name"] for _, _, step in steps() if "download-artifact" in step.get("uses", "")}
        self.assertEqual(kept, fetched)

    def test_run_commands_that_a_shell_can_read(self):
        for file, name, step in steps():
            if "run" in step and step.get("shell") is None:
                subprocess.run(["bash", "-n", "-c", step["run"]], check=True)

    def test_name_files_of_the_source_tree(self):
        text = "".join(file.read_text() for file in FILES)
        named = set(re.findall(r"\b(?:cmake|tests)/[\w./-]*\w", text)) | {".ci/run", "kv"}
        self.assertGreaterEqual(len(named), 5)
        for name in named:
            self.assertTrue((SOURCE / name).exists(), name)

    def test_use_the_job_s_own_rights_alone(self):
        for file in FILES:
            text = file.read_text()
            self.assertNotIn("secrets.", text)
            self.assertNotIn("://", text)
            for expression in re.findall(r"\$\{\{(.*?)\}\}", text):
                self.assertRegex(expression.strip(), "^" + CONTEXTS + "$")


unittest.main()
