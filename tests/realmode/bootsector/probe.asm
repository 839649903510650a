; Takes the place of IO.SYS: reports what the boot sector passed on, as lines "NAME=HEX" on port E9h, and stops
; the machine through port F4h. It only reports; the test decides.

        cpu     8086
        bits    16
        org     0

%include "report.inc"

        db      "MZ"
        times   200h - ($ - $$) db 0
        db      "BJ"                    ; inc dx, dec dx: the entry begins with it
        mov     [cs:savedSp], sp
        mov     [cs:savedDx], dx
        mov     [cs:savedDi], di
        mov     ax, cs
        mov     ds, ax
        cld
        report  "CS", cs
        report  "SS", ss
        report  "SP", [savedSp]
        report  "BP", bp
        report  "DI", [savedDi]
        report  "DX", [savedDx]
        report  "BP-2", [bp - 2]
        report  "BP-4", [bp - 4]
        report  "BP-6", [bp - 6]
        report  "BP-8", [bp - 8]
        report  "BP-A", [bp - 10]
        report  "BP-C", [bp - 12]
        report  "DRIVE", [bp + 24h]
        report  "TEXTS", [bp + 1EEh]
        report  "SIGNATURE", [bp + 1FEh]
        report  "MARKER", [marker]
        mov     bx, 1Eh * 4
        report  "TABLE", [ss:bx]
        report  "TABLESEGMENT", [ss:bx + 2]
        report  "TRACK", [ss:522h + 4]
        report  "SETTLE", [ss:522h + 9]
        jmp     endMachine

        reportRoutines

savedSp dw      0
savedDx dw      0
savedDi dw      0

        times   600h - ($ - $$) db 0
marker: dw      0BEEFh
        times   900h - ($ - $$) db 0AAh
