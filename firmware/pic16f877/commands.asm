; SPDX-License-Identifier: MIT
; The command interpreter: reads a line byte by byte, executes the command and replies.
;
; The line itself is not stored: its letter, length, number and errors are sufficient.
;
; commands_start   reset the line state.                                                uses W
; commands_byte    process line_byte; execute the line at a carriage return.
;                  For `G`, returns after the sweep has ended.                          uses W, FSR
; commands_abort   discard an incomplete line, reply `!+`.                              uses W, FSR

        include "board.inc"

        global  commands_start, commands_byte, commands_abort

        extern  line_byte, line_send, line_listen
        extern  factor, numbers_clear, numbers_digit, numbers_store, numbers_below, numbers_negate
        extern  synth_clock, synth_load, synth_update, synth_off
        extern  plan_start, plan_step, plan_ready, plan_reset, plan_word, plan_prepare
        extern  converter_settle, frames_sweep, identity_send

LONGEST         equ 12                  ; characters before the carriage return
SHORTEST_SETTLE equ 20                  ; us
LONGEST_SETTLE  equ 10000

; bits in seen
WRONG           equ 0
DIGIT           equ 1
MINUS           equ 2
SPOILT          equ 3                   ; ignore everything up to the next carriage return

commands_data   udata
letter          res 1
length          res 1                   ; LONGEST + 1 also represents longer lines
seen            res 1

; Jump to `to` if the character in W is `char`; otherwise W is unchanged.
on      macro   char, to
        xorlw   char
        skpnz
        goto    to
        xorlw   char
        endm

commands_code   code
commands_start:
        clrf    length
        clrf    seen
        goto    numbers_clear

commands_abort:
        call    commands_start
        movlw   '!'
        movwf   letter
        goto    accept

commands_byte:
        movf    line_byte, W
        on      LINE_SPOILT, spoil
        on      LF, ignore
        on      CR, execute
        btfsc   seen, SPOILT
        return
        movf    length, F
        skpz
        goto    behind_letter
        movwf   letter
        incf    length, F
        return

behind_letter:
        movf    length, W
        xorlw   LONGEST + 1
        skpnz
        return                          ; the line is too long and already marked WRONG
        incf    length, F
        movf    length, W
        xorlw   LONGEST + 1
        skpnz
        bsf     seen, WRONG
        movf    line_byte, W
        xorlw   '-'
        skpnz
        goto    minus
        movlw   '0'
        subwf   line_byte, F
        movlw   10
        subwf   line_byte, W            ; characters below '0' are now far above 9
        skpnc
        goto    wrong
        bsf     seen, DIGIT
        movf    line_byte, W
        goto    numbers_digit
minus:
        movf    letter, W
        xorlw   'D'
        skpz
        goto    wrong
        movf    length, W
        xorlw   2                       ; directly after the letter
        skpz
        goto    wrong
        bsf     seen, MINUS
        return
wrong:
        bsf     seen, WRONG
        return
spoil:
        bsf     seen, SPOILT
ignore:
        return

; --- executing a complete line ---
execute:
        btfsc   seen, SPOILT
        goto    commands_start
        movf    length, F
        skpnz
        return
        call    dispatch
        goto    commands_start

dispatch:
        movf    letter, W
        on      'A', frequency
        on      'B', start
        on      'D', step
        on      'P', prepare
        on      'S', settling
        on      'G', go
        on      '*', off
        on      '?', identify

refuse:
        movlw   '-'
        goto    answer
accept:
        movlw   '+'
answer:
        movwf   line_byte
        movf    letter, W
        call    line_send
        movf    line_byte, W
        call    line_send
        movlw   CR
        goto    line_send

frequency:
        call    hertz
        skpnc
        goto    refuse
        call    plan_word
        call    synth_load
        call    synth_update
        goto    accept

start:
        bcf     plan_ready, 0
        call    hertz
        skpnc
        goto    refuse
        movlw   plan_start
        movwf   FSR
        call    numbers_store
        goto    accept

step:
        bcf     plan_ready, 0
        call    hertz
        skpnc
        goto    refuse
        btfsc   seen, MINUS
        call    numbers_negate
        movlw   plan_step
        movwf   FSR
        call    numbers_store
        goto    accept

prepare:
        bcf     plan_ready, 0
        call    bare
        skpnc
        goto    refuse
        call    plan_prepare
        skpc
        goto    refuse
        goto    accept

settling:
        call    decimal
        skpnc
        goto    refuse
        movlw   SHORTEST_SETTLE
        movwf   factor
        clrf    factor + 1
        call    below_factor
        skpc
        goto    refuse
        movlw   LOW (LONGEST_SETTLE + 1)
        movwf   factor
        movlw   HIGH (LONGEST_SETTLE + 1)
        movwf   factor + 1
        call    below_factor
        skpnc
        goto    refuse
        call    converter_settle
        goto    accept

go:
        call    bare
        skpnc
        goto    refuse
        btfss   plan_ready, 0
        goto    refuse
        call    line_listen
        skpc
        return                          ; a `!` has already cancelled the sweep
        call    accept
        goto    frames_sweep

off:
        bcf     plan_ready, 0
        call    bare
        skpnc
        goto    refuse
        call    plan_reset
        call    synth_off
        goto    accept

identify:
        call    bare
        skpnc
        goto    refuse
        call    identity_send
        movlw   CR
        goto    line_send

; --- checking a line; C = 1: check failed ---

; The line must consist of the letter only.
bare:
        clrc
        decfsz  length, W
        setc
        return

; The letter must be followed by a decimal number and nothing else.
decimal:
        clrc
        btfss   seen, DIGIT
        setc
        btfsc   seen, WRONG
        setc
        return

; The number must also be below the generator clock.
hertz:
        call    decimal
        skpnc
        return
        movlw   synth_clock
        movwf   FSR
        goto    numbers_below           ; C = 1 for a number that is too large

; C = 0 if number is below factor.
below_factor:
        clrf    factor + 2
        clrf    factor + 3
        movlw   factor
        movwf   FSR
        goto    numbers_below

        end
