// quorvvalida-gerador: writes invoice or registration-form files of the size asked for.
#include <cstdio>
#include <exception>
#include <string>

#include <CLI/CLI.hpp>

#include "linhas.hpp"

namespace {

int Gera(int argc, char** argv) {
  CLI::App app(
      "Escreve arquivos de notas fiscais de produtor ou de ficha cadastral para "
      "exemplos, medições e testes.",
      "quorvvalida-gerador");
  std::string tipo;
  std::uint64_t linhas = 1000000;
  bool defeitos = false;
  std::string saida;
  app.add_option("TIPO", tipo, "notas ou fichas")
      ->required()
      ->check(CLI::IsMember({"notas", "fichas"}));
  app.add_option("-n,--linhas", linhas, "quantas linhas, aproximadamente (padrão 1000000)");
  app.add_flag("--defeitos", defeitos, "a maioria dos registros com vários defeitos");
  app.add_option("-o,--saida", saida, "arquivo a escrever (padrão: a saída padrão)");
  CLI11_PARSE(app, argc, argv);

  std::FILE* arquivo = saida.empty() ? stdout : std::fopen(saida.c_str(), "wb");
  if (arquivo == nullptr) {
    std::fprintf(stderr, "quorvvalida-gerador: não foi possível criar %s\n", saida.c_str());
    return 2;
  }
  std::setvbuf(arquivo, nullptr, _IOFBF, 1 << 20);
  if (tipo == "notas") {
    quorv::gerador::GeraNotas(arquivo, linhas, defeitos);
  } else {
    quorv::gerador::GeraFichas(arquivo, linhas, defeitos);
  }
  const bool falhou = std::ferror(arquivo) != 0;
  if (arquivo != stdout) std::fclose(arquivo);
  if (falhou) {
    std::fprintf(stderr, "quorvvalida-gerador: falha ao escrever\n");
    return 2;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Gera(argc, argv);
  } catch (const std::exception& erro) {
    std::fprintf(stderr, "quorvvalida-gerador: %s\n", erro.what());
    return 2;
  }
}
