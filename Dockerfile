# An image with the static programs and nothing else:
#
#   docker build -t quarvo .
#   docker run --rm -u "$(id -u):$(id -g)" -v "$PWD:/data" quarvo genome.fa.gz repeats.txt
#
# Pipeline engines start a shell in a container; for these, docker build --target shell.
FROM debian:bookworm-slim AS build
RUN apt-get update && apt-get install -y --no-install-recommends \
    ca-certificates g++ cmake ninja-build libtclap-dev libhwy-dev zlib1g-dev nlohmann-json3-dev libhts-dev libtbb-dev \
    libhtscodecs-dev libbz2-dev dpkg-dev nodejs npm
WORKDIR /quarvo
COPY . .
RUN scripts/build-static
RUN mkdir /programs && cp build/static/quarvo build/static/quarvo-convert build/static/quarvo-report build/static/quarvo-scan /programs

FROM debian:bookworm-slim AS shell
COPY --from=build /programs /usr/local/bin
WORKDIR /data

FROM scratch
COPY --from=build /programs /usr/local/bin
WORKDIR /data
ENV PATH=/usr/local/bin
ENTRYPOINT ["quarvo"]
