// usage: fuzz TARGET [COUNT] [OPTION...]     gives the target so many inputs; exit code 1: it is
// wrong
//        fuzz --list                         the targets
//   --input FILE        this input alone
//   --corpus FOLDER     begins with the inputs there, and keeps those that find something new
//   --findings FOLDER   where the input of a finding goes, if not into the current folder
//   --seed NUMBER       other inputs
//   --patience SECONDS  how long an input may take
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/fuzz/support/target.h"
#include "tests/fuzz/support/watcher.h"
#include "tests/fuzz/support/worker.h"

namespace {

using kv::fuzz::Run;
using kv::fuzz::Target;

struct Arguments {
  Run run;
  unsigned long watcher = 0;  // of a worker
};

// A path of the system that Wine stands on, or one of Windows.
std::string Path(std::string path) {
  if (!path.starts_with('/')) return path;
  std::replace(path.begin(), path.end(), '/', '\\');
  return "Z:" + path;
}

void ReadOption(Arguments& arguments, const std::string& option, const std::string& value) {
  Run& run = arguments.run;
  if (option == "--input") {
    run.inputFile = Path(value);
  } else if (option == "--corpus") {
    run.corpusFolder = Path(value);
  } else if (option == "--findings") {
    run.findingsFolder = Path(value);
  } else if (option == "--seed") {
    run.seed = std::stoull(value);
  } else if (option == "--patience") {
    run.patience = std::stoi(value);
  } else if (option == "--watcher") {
    arguments.watcher = std::stoul(value);
  } else {
    throw std::runtime_error("there is no option " + option);
  }
}

Arguments Read(const std::vector<std::string>& texts) {
  if (texts.empty()) throw std::runtime_error("no target is named");
  Arguments arguments;
  arguments.run.target = texts[0];
  std::size_t i = 1;
  if (i < texts.size() && !texts[i].starts_with("--")) arguments.run.count = std::stoi(texts[i++]);
  for (; i + 1 < texts.size(); i += 2) ReadOption(arguments, texts[i], texts[i + 1]);
  if (i != texts.size()) throw std::runtime_error(texts[i] + " lacks its value");
  return arguments;
}

const Target& Find(const std::string& name) {
  for (const Target& target : kv::fuzz::Targets()) {
    if (target.name == name) return target;
  }
  throw std::runtime_error("there is no target " + name);
}

int List() {
  for (const Target& target : kv::fuzz::Targets()) {
    if (!target.isPlanted) std::puts(target.name);
  }
  return 0;
}

int Start(std::vector<std::string> texts) {
  if (texts == std::vector<std::string>{"--list"}) return List();
  const Arguments arguments = Read(texts);
  const Target& target = Find(arguments.run.target);
  if (arguments.watcher != 0) return kv::fuzz::Work(target, arguments.run, arguments.watcher);
  texts.insert(texts.end(), {"--watcher", std::to_string(::GetCurrentProcessId())});
  return kv::fuzz::Watch(target, arguments.run, texts) ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  for (std::FILE* const stream : {stdout, stderr}) ::_setmode(::_fileno(stream), _O_BINARY);
  try {
    return Start({arguments + 1, arguments + count});
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "fuzz: %s\n", exception.what());
    return 2;
  }
}
