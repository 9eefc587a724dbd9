#!/bin/sh
# Makes the template variants that the workbook engine's tests fill as the BOM export does, from the
# bundled template's source (purchase-requisition.fods), into tests/xls/data/ (Debian:
# libreoffice-calc-nogui, gnumeric, python3-xlrd). variants.py says what each variant adds.
#   template-formulas.xls  LibreOffice: shaded part rows, formulas in each part row, a choice list
#   template-chart.xls     Gnumeric: a chart sheet between the form and the notes
#   template-macros.xls    the bundled template with an Excel 4.0 macro sheet and a VBA project
#                          (neither program writes those: variants.py adds them record by record)
set -eu
cd "$(dirname "$0")/../.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
data=tests/xls/data
lo() { soffice -env:UserInstallation="file://$work/profile" --headless "$@" >/dev/null 2>&1; }

python3 tools/template/variants.py formulas tools/template/purchase-requisition.fods "$work/template-formulas.fods"
lo --convert-to 'xls:MS Excel 97' --outdir "$work" "$work/template-formulas.fods"
cp "$work/template-formulas.xls" "$data/template-formulas.xls"

lo --convert-to ods --outdir "$work" tools/template/purchase-requisition.fods
ssconvert --export-type=Gnumeric_XmlIO:sax:0 "$work/purchase-requisition.ods" "$work/form.gnumeric" 2>/dev/null
python3 tools/template/variants.py chart "$work/form.gnumeric" "$work/template-chart.gnumeric"
ssconvert --export-type=Gnumeric_Excel:excel_biff8 "$work/template-chart.gnumeric" "$data/template-chart.xls" 2>/dev/null

/usr/bin/python3 tools/template/variants.py macros samples/config/塑胶模/模具标准件申购表.xls "$data/template-macros.xls"
