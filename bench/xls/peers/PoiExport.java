// The workbook job of the BOM export done with Apache POI HSSF, for bench_xls_compare
// (bench/README.md): load the template from memory, write each cell of the job as a string cell
// into the active sheet (an existing cell keeps its style), save into memory.
//
//   java -cp <poi jars>:. PoiExport TEMPLATE.xls JOB.tsv WARMUP REPEAT OUT.xls
//
// JOB.tsv: one cell a line, "row<TAB>column<TAB>text", UTF-8. Prints "version V", then
// "ms T" for each timed run (the WARMUP runs before them are not timed), and writes the book of
// the last run to OUT.xls.
import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.List;

import org.apache.poi.hssf.usermodel.HSSFCell;
import org.apache.poi.hssf.usermodel.HSSFRow;
import org.apache.poi.hssf.usermodel.HSSFSheet;
import org.apache.poi.hssf.usermodel.HSSFWorkbook;

public class PoiExport {
    static byte[] run(byte[] template, int[] rows, int[] cols, String[] texts) throws Exception {
        try (HSSFWorkbook book = new HSSFWorkbook(new ByteArrayInputStream(template))) {
            HSSFSheet sheet = book.getSheetAt(book.getActiveSheetIndex());
            for (int i = 0; i < texts.length; ++i) {
                HSSFRow row = sheet.getRow(rows[i]);
                if (row == null) row = sheet.createRow(rows[i]);
                HSSFCell cell = row.getCell(cols[i]);
                if (cell == null) cell = row.createCell(cols[i]);
                cell.setCellValue(texts[i]);
            }
            ByteArrayOutputStream out = new ByteArrayOutputStream();
            book.write(out);
            return out.toByteArray();
        }
    }

    public static void main(String[] args) throws Exception {
        byte[] template = Files.readAllBytes(Paths.get(args[0]));
        List<String> lines = Files.readAllLines(Paths.get(args[1]), StandardCharsets.UTF_8);
        int warmup = Integer.parseInt(args[2]);
        int repeat = Integer.parseInt(args[3]);
        int n = lines.size();
        int[] rows = new int[n];
        int[] cols = new int[n];
        String[] texts = new String[n];
        for (int i = 0; i < n; ++i) {
            String[] fields = lines.get(i).split("\t", 3);
            rows[i] = Integer.parseInt(fields[0]);
            cols[i] = Integer.parseInt(fields[1]);
            texts[i] = fields[2];
        }
        System.out.println("version " + HSSFWorkbook.class.getPackage().getImplementationVersion());
        for (int k = 0; k < warmup; ++k) run(template, rows, cols, texts);
        byte[] last = null;
        for (int k = 0; k < repeat; ++k) {
            long start = System.nanoTime();
            last = run(template, rows, cols, texts);
            System.out.println("ms " + (System.nanoTime() - start) / 1e6);
        }
        Files.write(Paths.get(args[4]), last);
    }
}
