; Takes the place of KERNEL.SYS: reports how it was started and whether all of it was loaded, and ends the machine. It only
; reports; the test decides. SECTORS is its length; the last word of each sector is the number of that sector, and 100 bytes
; follow the last one.

        cpu     8086
        bits    16
        org     0

%include "report.inc"

        mov     [cs:savedSp], sp
        mov     [cs:savedDx], dx
        mov     [cs:savedBx], bx
        mov     ax, cs
        mov     ds, ax
        cld
        report  "CS", cs
        report  "SS", ss
        report  "SP", [savedSp]
        report  "BP", bp
        report  "BX", [savedBx]
        report  "DX", [savedDx]
        report  "DRIVE", [bp + 24h]
        report  "SECTORBYTES", [bp + 0Bh]
        report  "TRACK", [bp + 18h]
        report  "SIGNATURE", [bp + 1FEh]

; GOOD: the number of sectors before the first wrong one; AX counts paragraphs.
        mov     ax, cs
        xor     bx, bx
nextSector:
        mov     es, ax
        cmp     [es:1FEh], bx
        jne     counted
        add     ax, 512 / 16
        inc     bx
        cmp     bx, SECTORS
        jb      nextSector
counted:
        mov     [good], bx
        report  "GOOD", [good]
        mov     ax, cs
        add     ax, SECTORS * 32
        mov     es, ax
        report  "TAIL", [es:98]
        jmp     endMachine

        reportRoutines

savedSp dw      0
savedDx dw      0
savedBx dw      0
good    dw      0
        times   1FEh - ($ - $$) db 0
        dw      0
%assign sector 1
%rep SECTORS - 1
        times   1FEh db 0F6h
        dw      sector
%assign sector sector + 1
%endrep
        times   98 db 0
        dw      7A11h
