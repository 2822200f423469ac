# SPDX-License-Identifier: MIT
# Sourced: what the scripts here share about private namespaces.

die() {
    printf '\n./dev: %s\n' "$1" >&2
    shift
    [ $# = 0 ] || printf '       %s\n' "$@" >&2
    exit 1
}

# The options that make the caller root in a user namespace of its own, where it is not root already.
namespace_owner=()
[ "$(id -u)" = 0 ] || namespace_owner=(--user --map-root-user --map-auto)

# Asked before anything is installed or made, since nothing of this works without them.
need_private_namespaces() {
    if [ ${#namespace_owner[@]} != 0 ] && ! unshare "${namespace_owner[@]}" true 2>/dev/null; then
        die "this kernel or account does not allow a private user namespace." \
            "Run ./dev as root, or ask an administrator for: the package uidmap, a line for your" \
            "account in /etc/subuid and /etc/subgid, and kernel.unprivileged_userns_clone=1."
    fi
    unshare "${namespace_owner[@]}" --mount --pid --fork true 2>/dev/null ||
        die "this machine does not allow private mount and process namespaces." \
            "Run ./dev as root; in a container, the container needs the capability SYS_ADMIN."
}

as_owner() {
    if [ ${#namespace_owner[@]} = 0 ]; then "$@"; else unshare "${namespace_owner[@]}" "$@"; fi
}

# Runs a command in private mount and process namespaces and waits for it. A signal that ends this script
# kills the namespace's first process, and with it the kernel ends everything that was started inside and
# drops every mount. Background jobs ignore Ctrl-C, hence the reset.
run_contained() {
    unshare "$@" <&0 &
    local child=$! status=0
    trap 'kill -KILL '"$child"' 2>/dev/null; wait '"$child"' 2>/dev/null || :; exit 130' INT
    trap 'kill -KILL '"$child"' 2>/dev/null; wait '"$child"' 2>/dev/null || :; exit 143' TERM HUP
    wait "$child" || status=$?
    trap - INT TERM HUP
    return "$status"
}
contained=(--mount --pid --fork --kill-child env --default-signal=INT,QUIT)
