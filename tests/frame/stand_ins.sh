#!/bin/sh
# Usage: stand_ins.sh "OBJECTS;…" "PENDING…"
# The plug-in's weak stand-ins must be exactly the pending ones, and none may have real code beside
# it: a stand-in whose real code exists is dead and must be deleted.
objects=$(printf '%s' "$1" | tr ';' ' ')
symbols=$(nm -C $objects | cut -c18-)
weak=$(printf '%s\n' "$symbols" | awk '$1 ~ /^[VW]$/' | cut -c3- | grep -E '^(Zk|XP|Mac_|g[A-Z])[^:]*$' | sort -u)
strong=$(printf '%s\n' "$symbols" | awk '$1 ~ /^[TDB]$/' | cut -c3- | sort -u)
echo "weak stand-ins: $weak"
if [ "$weak" != "$2" ]; then
  echo "expected only: $2"
  exit 1
fi
dead=$(printf '%s\n' "$strong" | grep -Fx "$weak")
if [ -n "$dead" ]; then
  echo "real code exists for: $dead (delete its stand-in)"
  exit 1
fi
