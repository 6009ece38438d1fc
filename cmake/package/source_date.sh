#!/bin/sh
# usage: source_date.sh SOURCE_FOLDER FILE     writes the date of the sources, in seconds since 1970
# SOURCE_DATE_EPOCH of the environment comes first, then the last commit; sources without a history get
# the first day that a zip can tell. The file is left alone when it holds that date already.
set -eu
first_day=315532800

# A repository further up is not that of the sources. It may belong to another user.
last_commit() {
  GIT_CEILING_DIRECTORIES=$(dirname "$1") git -C "$1" -c safe.directory='*' log -1 --format=%ct 2>/dev/null
}

date=${SOURCE_DATE_EPOCH:-$(last_commit "$1" || echo "$first_day")}
[ "$(cat "$2" 2>/dev/null)" = "$date" ] || echo "$date" >"$2"
