# The results as files for other programs, by quarvo-convert.


rule convert:
    input:
        f"results/{{genome}}.{SUFFIX}",
    output:
        "results/{genome}.{conversion}",
    params:
        program=config["converter"],
        format=lambda wildcards: CONVERSIONS[wildcards.conversion],
    log:
        "logs/{genome}/convert-{conversion}.log",
    conda:
        "../envs/python.yaml"
    resources:
        mem_mb=lambda wildcards, attempt: attempt * 1000,
        runtime=file_minutes,
    shell:
        "{params.program:q} -t {params.format} -o {output:q} -- {input:q} 2> {log:q}"
