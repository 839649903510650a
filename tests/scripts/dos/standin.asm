; The first sector of a floppy that stands for one with a DOS: asks "Your choice:" and shows each key. Some do more:
;
;   f    writes a sector of the floppy; a later start says "It was written" because of it
;   d    writes a sector of the hard disk
;   s    shows more rows than a screen has
;
; After each key it shows "Done K" for a key K, and asks again. Enter alone begins a row that ends with ">". Keys that are pressed
; in the third of a second after a question are thrown away, as by a program that wants no answer typed ahead.

        cpu     386
        bits    16
        org     7C00h

TICKS   equ     46Ch                    ; of the clock, 18.2 a second

        xor     ax, ax
        mov     ds, ax
        mov     es, ax
        mov     ss, ax
        mov     sp, 7C00h
        cld
        mov     ax, 0201h
        mov     bx, second
        mov     cx, 2                   ; where "f" writes
        mov     dx, 0
        int     13h
        cmp     word [second + 510], 0AA55h
        jne     ask
        mov     si, written
        call    print
ask:
        mov     si, question
        call    print
        mov     bp, [TICKS]
discard:
        mov     ah, 1                   ; is there a key?
        int     16h
        jz      noKey
        mov     ah, 0
        int     16h
noKey:
        mov     ax, [TICKS]
        sub     ax, bp
        cmp     ax, 6
        jb      discard
nextKey:
        mov     ah, 0                   ; wait for a key
        int     16h
        cmp     al, 13
        je      row
        mov     [key], al
        call    printLetter
        cmp     byte [inRow], 0
        jne     nextKey
        mov     dl, 0
        cmp     al, "f"
        je      write
        mov     dl, 80h
        cmp     al, "d"
        je      write
        cmp     al, "s"
        jne     done
        mov     cx, 40
nextRow:
        mov     si, filler
        call    print
        loop    nextRow
        jmp     done
write:
        mov     ax, 0301h               ; one sector
        mov     bx, 7C00h
        mov     cx, 2                   ; the second one of the first track
        mov     dh, 0
        int     13h
done:
        mov     si, answer
        call    print
        mov     al, [key]
        call    printLetter
        jmp     ask
row:
        mov     byte [inRow], 1
        mov     si, rowStart
        call    print
        jmp     nextKey

print:
        lodsb
        test    al, al
        jz      printed
        call    printLetter
        jmp     print
printLetter:
        push    ax
        mov     ah, 0Eh
        mov     bx, 7
        int     10h
        pop     ax
printed:
        ret

second  equ     7E00h

key     db      0
inRow   db      0
question:
        db      13, 10, "  1  First line", 13, 10, "  H  Help", 13, 10, "Your choice:", 0
answer: db      13, 10, "Done ", 0
written:
        db      13, 10, "It was written", 0
filler: db      13, 10, "One of many rows", 0
rowStart:
        db      13, 10, "A:\>", 0
        times   510 - ($ - $$) db 0
        dw      0AA55h
