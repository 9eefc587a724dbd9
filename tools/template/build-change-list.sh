#!/bin/sh
# Rebuilds the change workbook template samples/bomdiff/标准件变更单.xls from change-list.gnumeric
# with Gnumeric (Debian: gnumeric).
set -eu
cd "$(dirname "$0")/../.."
ssconvert --export-type=Gnumeric_Excel:excel_biff8 tools/template/change-list.gnumeric "samples/bomdiff/标准件变更单.xls"
