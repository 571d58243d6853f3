# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2034
# Shared by the commands of the root: named steps with their time, and a word on what to do when
# one fails. To be sourced by a bash script that has set -euo pipefail.

# step WHAT ADVICE COMMAND...: runs the command; when it fails, says so, gives the advice and ends
# the script with the command's exit code.
step()
{
    local what=$1 advice=$2 code=0 start=$SECONDS
    shift 2
    echo "==> $what"
    "$@" || code=$?
    if [[ $code -ne 0 ]]; then
        {
            echo
            echo "==> Failed: $what (exit code $code)"
            echo "    $advice"
        } >&2
        exit "$code"
    fi
    echo "    done in $((SECONDS - start)) s"
}

configure_advice="The lines above name what CMake did not find. On Debian and Ubuntu scripts/install-packages
    installs it; elsewhere see the table of dependencies in README.md. A build folder from another
    machine or compiler is made anew by: rm -rf build"
build_advice="The first \"error:\" above is the cause. Out of memory (\"Killed\")? Build with one job:
    CMAKE_BUILD_PARALLEL_LEVEL=1 $0"
