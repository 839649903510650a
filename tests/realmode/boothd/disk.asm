; A hard disk of four sectors whose first one reports how it was started, as lines "NAME=HEX" on port E9h, then overwrites the
; memory of the DOS that started it, and reports whether time and disk still work. It only reports; the test decides.

        cpu     386
        bits    16
        org     7C00h

%include "report.inc"

kMarker         equ     4D52h

        mov     [savedDx], dx
        mov     [savedSp], sp
        mov     [savedDs], ds
        mov     [savedEs], es
        pushf
        pop     word [savedFlags]
        call    next
next:   pop     ax
        sub     ax, next
        mov     [savedIp], ax
        xor     bx, bx
        mov     es, bx
        mov     ax, 0203h
        mov     cx, 2
        mov     bx, 7E00h
        int     13h
        jnc     7E00h
failed:
        hlt
        jmp     failed

        reportRoutines

savedDx dw      0
savedSp dw      0
savedDs dw      0
savedEs dw      0
savedIp dw      0
savedFlags dw   0
marker  dw      0

        times   510 - ($ - $$) db 0
        dw      0AA55h

        cld
        report  "CS", cs
        report  "DISPLACEMENT", [savedIp]
        report  "SS", ss
        report  "SP", [savedSp]
        report  "DS", [savedDs]
        report  "ES", [savedEs]
        report  "DX", [savedDx]
        report  "FLAGS", [savedFlags]
        report  "INT08", [08h * 4 + 2]
        report  "INT13", [13h * 4 + 2]
        report  "INT15", [15h * 4 + 2]
        report  "INT19", [19h * 4 + 2]
        report  "INT1C", [1Ch * 4 + 2]
        report  "INT70", [70h * 4 + 2]
        report  "INT76", [76h * 4 + 2]
        report  "INT19OFFSET", [19h * 4]

; The memory of DOS, below this code and above it, becomes CLI and HLT.
        mov     al, 0FAh
        mov     ah, 0F4h
        xor     di, di
        mov     es, di
        mov     di, 500h
        mov     cx, (7000h - 500h) / 2
        rep stosw
        mov     bx, 0900h
nextPiece:
        mov     es, bx
        xor     di, di
        mov     cx, 1000h / 2
        rep stosw
        add     bx, 100h
        cmp     bx, 9F00h
        jb      nextPiece

        sti
        mov     bx, [46Ch]
waiting:
        hlt
        cmp     bx, [46Ch]
        je      waiting
        xor     bx, bx
        mov     es, bx
        mov     ax, 0201h
        mov     cx, 4
        mov     dx, 80h
        mov     bx, 1000h
        int     13h
        jc      failed
        report  "MARKER", [1000h + 510]
        jmp     endMachine

        times   4 * 512 - 2 - ($ - $$) db 0
        dw      kMarker
