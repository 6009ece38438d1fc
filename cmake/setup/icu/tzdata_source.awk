# Turns tzdata.zi, the compact form of the time zone rules, into the long form that the rule compiler
# in ICU's source tree reads: keywords and the names of months and days are written out.

BEGIN {
  OFS = "\t"
  months = "January February March April May June July August September October November December"
  days = "Sunday Monday Tuesday Wednesday Thursday Friday Saturday"
}

/^#/ || NF == 0 { next }
{ $1 = $1 }  # separates the fields by tabs

# R NAME FROM TO - MONTH DAY ...
/^[Rr]/ {
  $1 = "Rule"
  if ($4 ~ /^o/) $4 = "only"
  if ($4 ~ /^m/) $4 = "max"
  $6 = name($6, months)
  $7 = day($7)
  print
  next
}

# L TARGET LINK
/^[Ll]/ {
  $1 = "Link"
  print
  next
}

# Z NAME OFFSET RULES FORMAT [UNTIL-YEAR MONTH DAY ...], or a continuation from OFFSET on
{
  format = 3
  if ($1 ~ /^[Zz]/) {
    $1 = "Zone"
    format = 5
  }
  if ($format == "%z") $format = "ZZZ"
  if (NF > format + 1) $(format + 2) = name($(format + 2), months)
  if (NF > format + 2) $(format + 3) = day($(format + 3))
  print
}

function day(text,    at) {
  if (text ~ /^-?[0-9]+$/) return text
  at = index(text, "<=")
  if (!at) at = index(text, ">=")
  if (at) return name(substr(text, 1, at - 1), days) substr(text, at)
  if (sub(/^l(ast)?/, "", text)) return "last" name(text, days)
  give_up(text)
}

# The first three letters of the name in `list` that starts with `text`.
function name(text, list,    names, count, i) {
  count = split(list, names, " ")
  for (i = 1; i <= count; ++i)
    if (index(tolower(names[i]), tolower(text)) == 1) return substr(names[i], 1, 3)
  give_up(text)
}

function give_up(text) {
  print "not understood: " text > "/dev/stderr"
  exit 1
}
