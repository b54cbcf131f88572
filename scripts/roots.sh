# shellcheck shell=bash
# Bare Debian systems in folders, for scripts/bare-root and packaging/test. To be sourced by bash
# after scripts/common.sh. Needs root, because processes work in them with mounts of their own.
#
# What was made or fetched once is kept in $roots_store from one run to the next: a system as a tar
# for a week, and with it the packages that apt has fetched.
roots_store=/var/tmp/reelshift-roots
roots_days=7

# Where a root folder cannot be had: says why and ends with 77 ("skipped").
skip() { printf 'SKIPPED: %s\n' "$*" >&2; exit 77; }

# require_roots: what it takes to make root folders and to work in them.
require_roots() {
    ((EUID == 0)) || skip "a root folder can be made by root alone"
    command -v dpkg-query >/dev/null || skip "this is not a Debian system"
    unshare --mount --pid --fork true 2>/dev/null || skip "no namespaces can be made here"
    require_packages "${ROOT_PACKAGES[@]}"
    [[ -d $roots_store ]] || mkdir -m 700 "$roots_store"
    [[ -O $roots_store && ! -L $roots_store ]] || skip "$roots_store belongs to somebody else"
    # What a run has left that was killed itself.
    find "$roots_store" -mindepth 1 -maxdepth 1 -name 'root.*' -mmin +600 \
        -exec rm -rf --one-file-system {} +
}

# sources_of SUITE: the machine's own mirrors, a line each, for another release of Debian.
sources_of() {
    local suite=$1 own mirror release component
    own=$(. /etc/os-release && printf '%s' "${VERSION_CODENAME:-}")
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        LC_ALL=C sort -u | while read -r mirror release component; do
        case $component:$release in
        main:"$own") ;;
        main:"$own"-updates | main:"$own"-security) [[ $suite != sid ]] || continue ;;
        *) continue ;;
        esac
        printf 'deb [signed-by=%s] %s %s %s\n' /usr/share/keyrings/debian-archive-keyring.gpg \
            "$mirror" "$suite${release#"$own"}" "$component"
    done
}

# fetching_settings: how the machine's own apt fetches, as settings of apt: proxies, dates.
fetching_settings() {
    apt-config dump --no-empty Acquire |
        grep -vE '^Acquire::(IndexTargets|GzipIndexes|Languages|CompressionTypes|Changelogs)'
    printf 'Acquire::Retries "3";\nAPT::Keep-Downloaded-Packages "true";\n'
}

# make_tar SUITE: a bare system of the release, as tar and as it is when it has just been installed,
# with nothing but git to fetch sources with. Prints where it is.
make_tar() {
    local suite=$1 sources tar=$roots_store/$1.tar settings=$roots_store/apt.conf
    find "$tar" -mtime "+$roots_days" -delete 2>/dev/null || true
    if [[ ! -s $tar ]]; then
        sources=$(sources_of "$suite")
        [[ -n $sources ]] || skip "apt knows no mirror of this machine's own release"
        say "Making a bare system of $suite" >&2
        rm -rf "$roots_store/archives-$suite"
        fetching_settings >"$settings"
        local try
        for try in again no; do
            mmdebstrap --quiet --format=tar --variant=minbase --include=git,ca-certificates \
                --aptopt="$settings" "$suite" "$tar.part" - <<<"$sources" >&2 && break
            [[ $try == again ]] || skip "Debian's packages cannot be fetched"
            sleep 10
        done
        mv "$tar.part" "$tar"
    fi
    printf '%s\n' "$tar"
}

# make_root SUITE FOLDER: a fresh bare system in a folder that is empty or not there yet.
make_root() {
    local suite=$1 folder=$2 tar file
    [[ -z $(ls -A "$folder" 2>/dev/null) ]] || fail "$folder is not empty"
    tar=$(make_tar "$suite")
    mkdir -p "$folder"
    if ! tar -C "$folder" -xf "$tar" || [[ ! -x $folder/usr/bin/apt-get ]]; then
        say "$tar is broken and made anew"
        rm -rf --one-file-system "$folder" "$tar"
        tar=$(make_tar "$suite")
        mkdir -p "$folder"
        tar -C "$folder" -xf "$tar"
    fi
    if [[ ! -c $folder/dev/null ]] || ! : >"$folder/dev/null"; then
        skip "there are no devices in $folder"
    fi
    for file in /etc/resolv.conf /etc/hosts; do
        cp -L --remove-destination "$file" "$folder$file"
    done
    # No service is started in a folder.
    printf '#!/bin/sh\nexit 101\n' >"$folder/usr/sbin/policy-rc.d"
    chmod +x "$folder/usr/sbin/policy-rc.d"
    # Nobody misses the folder after a power cut.
    echo force-unsafe-io >"$folder/etc/dpkg/dpkg.cfg.d/unsafe-io"
    mkdir -p "$roots_store/archives-$suite"
    printf '%s\n' "$suite" >"$folder/.suite"
    exchange_archives "$roots_store/archives-$suite" "$folder/var/cache/apt/archives"
}

# exchange_archives FROM TO: what apt has fetched becomes known in the other folder as well.
exchange_archives() {
    find "$1" -maxdepth 1 -name '*.deb' -exec cp --link --no-clobber -t "$2" {} +
}

# remove_root FOLDER: keeps what was fetched, and never reaches into anything mounted.
remove_root() {
    local folder=$1
    [[ -d $folder ]] || return 0
    if [[ -f $folder/.suite && -d $folder/var/cache/apt/archives ]]; then
        exchange_archives "$folder/var/cache/apt/archives" \
            "$roots_store/archives-$(<"$folder/.suite")" || true
    fi
    rm -rf --one-file-system "$folder"
}

# in_root FOLDER [UNSHARE ARGUMENT...] -- COMMAND...: runs a command in the folder, with processes
# and mounts of its own, which end with it. Of the environment it gets what makes up a login, and
# what begins with CI or REELSHIFT_; $samples, a folder, is there as /srv/samples, to be read alone.
in_root() {
    local folder=$1 apart=() known=() name
    shift
    while [[ $1 != -- ]]; do
        apart+=("$1")
        shift
    done
    shift
    for name in $(compgen -e | grep -E '^(CI$|REELSHIFT_)'); do
        known+=("$name=${!name}")
    done
    [[ -z ${samples:-} ]] || known+=(REELSHIFT_SAMPLES=/srv/samples)
    # The shell stays: it takes the statuses of orphans, as the first process has to.
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child "${apart[@]}" -- sh -ec '
        root=$1 samples=$2
        shift 2
        mount -t proc proc "$root/proc"
        mount -t sysfs -o ro sysfs "$root/sys"
        mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
        if [ -n "$samples" ]; then
            mkdir -p "$root/srv/samples"
            mount --bind "$samples" "$root/srv/samples"
            mount -o remount,bind,ro "$root/srv/samples"
        fi
        chroot "$root" env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
            HOME=/root USER=root LOGNAME=root "$@"' in_root "$folder" "${samples:-}" \
        "${known[@]}" "$@"
}
