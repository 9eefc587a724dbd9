#!/bin/sh
# Regenerates the workbook fixtures of the xls tests from their flat ODS sources, once, with the
# spreadsheet programs themselves (Debian: libreoffice-calc-nogui, gnumeric). The tests use the
# committed results and need neither program.
#   features-libreoffice.xls  LibreOffice's .xls export of features.fods
#   features-gnumeric.xls     Gnumeric's .xls export of the same workbook (read from an .ods),
#                             saved with its second sheet active (LibreOffice's headless export
#                             always records the first)
#   template-gnumeric.xls     Gnumeric's .xls export of the bundled template's source
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
lo() { soffice -env:UserInstallation="file://$work/profile" --headless "$@" >/dev/null 2>&1; }

lo --convert-to 'xls:MS Excel 97' --outdir "$work" features.fods
cp "$work/features.xls" features-libreoffice.xls
lo --convert-to ods --outdir "$work" features.fods
ssconvert --export-type=Gnumeric_XmlIO:sax:0 "$work/features.ods" "$work/features.gnumeric" 2>/dev/null
sed -i 's/SelectedTab="0"/SelectedTab="1"/' "$work/features.gnumeric"
ssconvert --export-type=Gnumeric_Excel:excel_biff8 "$work/features.gnumeric" features-gnumeric.xls 2>/dev/null

lo --convert-to ods --outdir "$work" ../../../tools/template/purchase-requisition.fods
ssconvert --export-type=Gnumeric_Excel:excel_biff8 "$work/purchase-requisition.ods" template-gnumeric.xls 2>/dev/null
