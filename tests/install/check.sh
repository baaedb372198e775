#!/bin/sh
# Installs the build into a fresh prefix and checks what an operator gets there: the programs, the demo
# router found relative to the installed binary, bash completion, and manual pages that render without a
# warning in an 80-column terminal.
set -eu
build=$1 prefix=$2
rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null
for f in bin/ostrel bin/vellumctl share/ostrel/demo-root/vellum.db share/man/man1/ostrel.1 \
         share/man/man1/vellumctl.1 share/bash-completion/completions/ostrel \
         share/bash-completion/completions/vellumctl; do
  [ -e "$prefix/$f" ] || { echo "missing: $f"; exit 1; }
done
env -u OSTREL_ROOT "$prefix/bin/ostrel" -S | grep -q '^MRIB Route Summary for VRF default$'
# That was the installed root, not the build's: without its store library it fails.
rm "$prefix/share/ostrel/demo-root/pkg/lib/libvellum.so"
env -u OSTREL_ROOT "$prefix/bin/ostrel" -S 2>&1 | grep -q 'The client library is not available'
for page in ostrel vellumctl; do
  warnings=$(MANWIDTH=80 man --warnings -l "$prefix/share/man/man1/$page.1" 2>&1 >/dev/null)
  [ -z "$warnings" ] || { echo "$page.1: $warnings"; exit 1; }
done
bash -c ". '$prefix/share/bash-completion/completions/ostrel' && . '$prefix/share/bash-completion/completions/vellumctl'"
