# The bytes of the file QUARVO_REPORT_TEMPLATE, without a final NUL.
        .section .rodata
        .global quarvo_report_template_begin
        .global quarvo_report_template_end
quarvo_report_template_begin:
        .incbin QUARVO_REPORT_TEMPLATE
quarvo_report_template_end:
        .section .note.GNU-stack, "", %progbits
