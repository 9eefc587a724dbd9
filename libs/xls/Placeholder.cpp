// replaced by the workbook engine
