#!/usr/bin/env bash
# Builds the package and holds the package against Debian's rules, and the desktop file and the
# metainfo against those of desktops. Every error and warning fails.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

install_packages "${package_check_packages[@]}"
package=$(bash scripts/package.sh)
desktop-file-validate build/release/packaging/*.desktop
appstreamcli validate --no-net build/release/packaging/*.metainfo.xml
lintian --no-cfg --allow-root --fail-on error,warning --display-info "$package"
say "$package is in order"
