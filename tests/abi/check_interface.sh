#!/bin/sh
# usage: check_interface.sh SOURCE_FOLDER     checks docs/interface.md
# Its tables have one row for each name of the reviewed export list, overloads together; a class
# stands for its type information and its table of virtual functions. The header named in a row
# declares the name, and the test file named there uses it, or its class where no test can.
set -eu
cd "$1"

cut -f 2 tests/abi/exports.txt | awk '
  function complain(text) { print text; failed = 1 }

  BEGIN {
    privates = " KvFoldersRemover::ReadLanguages KvFoldersRemover::DeleteFolder" \
      " KvFoldersRemover::DeleteFiles KvFoldersRemover::DeleteFilesInFolder "
  }

  function member(name) { sub(/.*::~?/, "", name); return name }
  function class(name) { sub(/::.*/, "", name); return name }

  # Whether the file holds the word.
  function holds(file, word,   line, found) {
    while ((getline line < file) > 0) {
      if (line ~ ("(^|[^A-Za-z0-9_])" word "([^A-Za-z0-9_]|$)")) { found = 1; break }
    }
    close(file)
    return found
  }

  FILENAME == "-" {
    sub(/^(typeinfo|vtable) for /, "")
    sub(/\(.*/, "")
    gsub(/\[abi:cxx11\]/, "")
    if (!($0 in exported)) ++names
    exported[$0]
    next
  }
  /^\| `/ {
    split($0, cells, " *\\| *")
    name = cells[2]; header = cells[3]; test = cells[4]
    gsub(/`/, "", name); gsub(/`/, "", header); gsub(/`/, "", test)
    if (name in listed) complain(name " has two rows")
    listed[name]
    if (!(name in exported)) complain(name " is not exported")
    word = name ~ /::operator/ ? class(name) : member(name)
    if (!holds("utils/" header, word)) complain(header " does not declare " name)
    if (index(privates, " " name " ")) word = class(name)
    if (!holds("tests/" test, word)) complain(test " does not use " name)
    if (cells[5] == "") complain(name " is not described")
  }
  END {
    for (name in exported) if (!(name in listed)) complain(name " has no row")
    if (names < 200) complain("the export list could not be read")
    exit failed
  }' - docs/interface.md
