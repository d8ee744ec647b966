# shellcheck shell=bash
# Where this machine gets Debian from.

# The mirrors of Debian that apt is set up with, one per line, without those of security updates.
debian_mirrors() {
    # shellcheck disable=SC2016 # apt expands this, not the shell
    apt-get indextargets 'Created-By: Packages' 'Origin: Debian' 'Component: main' --format '$(REPO_URI)' |
        grep -v -- -security | awk '!seen[$0]++'
}
