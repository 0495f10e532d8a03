"""The module "varneltexts" of the embedded Python, for editors and type checkers: scripts of the product import it."""


def tr(text: str, /) -> str:
    """tr(text) - the text in the user's language; the text itself if there is no translation"""
