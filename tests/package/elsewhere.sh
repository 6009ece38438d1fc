#!/bin/sh
# usage: elsewhere.sh BUILD_FOLDER ELSEWHERE_BUILD_FOLDER     what two folders made of the same sources
set -eu
here=$1 elsewhere=$2
[ -d "$elsewhere/package" ] || {
  echo 'nothing was built elsewhere: ./kv test Package does that, or the target elsewhere'
  exit 1
}
cd "$here"
status=0
count=0
for file in bin/kvutils.dll bin/kvutils.dll.debug bin/lib*.dll lib/libkvutils.dll.a lib/libkvutils_kernels.a \
  package/*.zip; do
  count=$((count + 1))
  cmp "$file" "$elsewhere/$file" || status=1
done
[ "$count" = 9 ] || { echo "compared $count files instead of 9"; exit 1; }
[ "$status" = 0 ] || echo 'the folder of the sources shows in what is built; or it was built elsewhere from others'
exit "$status"
