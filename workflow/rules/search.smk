# A genome is dealt to shards, each shard is searched by a job of its own, and the results are put together.


checkpoint split:
    input:
        # Its content decides, by the checksum below, and no time stamp. Snakemake forgets such a mark of a function.
        genome=lambda wildcards: ancient(genome_file(wildcards)),
    output:
        plan="work/{genome}/plan.tsv",
        summary="work/{genome}/shards.tsv",
        shards=directory("work/{genome}/shards"),
    params:
        shards=config["shards"],
        checksum=genome_checksum,
    log:
        "logs/{genome}/split.log",
    conda:
        "../envs/python.yaml"
    resources:
        mem_mb=lambda wildcards, attempt: attempt * 1000,
        runtime=file_minutes,
    shell:
        "split.py --shards {params.shards} --plan {output.plan:q} --summary {output.summary:q}"
        " --directory {output.shards:q} -- {input.genome:q} 2> {log:q}"


rule search:
    input:
        plan=plan_file,
        records="work/{genome}/shards/{shard}.fa",
    output:
        results=temp("work/{genome}/results/{shard}"),
        masked=temp("work/{genome}/masked/{shard}") if OPTIONS["maskX"] else [],
    params:
        program=config["program"] if config["threads"] == 1 else config["scanner"],
        options=option_words(),
        masked=lambda wildcards, output: output.masked or "-",
    log:
        "logs/{genome}/search-{shard}.log",
    conda:
        "../envs/python.yaml"
    threads: config["threads"]
    resources:
        mem_mb=search_memory,
        runtime=search_minutes,
    shell:
        "search-shard {params.program:q} {threads} {input.plan:q} {input.records:q} {output.results:q}"
        " {params.masked:q} {log:q} {params.options:q}"


rule gather:
    input:
        plan=plan_file,
        shards=searched_shards("results"),
    output:
        f"results/{{genome}}.{SUFFIX}",
    params:
        layout=OPTIONS["outputFormat"],
        input_name=genome_file,
        # Named so that other options make the results anew, though those of the shards are gone by then.
        options=option_words(),
    log:
        "logs/{genome}/gather.log",
    conda:
        "../envs/python.yaml"
    resources:
        mem_mb=lambda wildcards, attempt: attempt * 500,
        runtime=file_minutes,
    shell:
        "gather.py --layout {params.layout} --plan {input.plan:q} --input-name={params.input_name:q}"
        " --output {output:q} {input.shards:q} 2> {log:q}"


rule gather_masked:
    input:
        plan=plan_file,
        shards=searched_shards("masked"),
    output:
        "results/{genome}.masked",
    params:
        options=option_words(),
    log:
        "logs/{genome}/gather-masked.log",
    conda:
        "../envs/python.yaml"
    resources:
        mem_mb=lambda wildcards, attempt: attempt * 500,
        runtime=file_minutes,
    shell:
        "gather.py --layout masked --plan {input.plan:q} --output {output:q} {input.shards:q} 2> {log:q}"
