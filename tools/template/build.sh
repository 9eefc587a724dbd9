#!/bin/sh
# Rebuilds the bundled template 模具标准件申购表.xls from purchase-requisition.fods with LibreOffice
# (Debian: libreoffice-calc-nogui) and puts it into both sample configuration folders.
set -eu
cd "$(dirname "$0")/../.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
soffice -env:UserInstallation="file://$work/profile" --headless \
    --convert-to 'xls:MS Excel 97' --outdir "$work" tools/template/purchase-requisition.fods >/dev/null 2>&1
test -s "$work/purchase-requisition.xls"
for folder in 塑胶模 压铸模; do
    cp "$work/purchase-requisition.xls" "samples/config/$folder/模具标准件申购表.xls"
done
