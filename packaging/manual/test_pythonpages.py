"""Tests of pythonpages.py with a module made here."""
import types
import unittest
import xml.etree.ElementTree

import pythonpages


class Pump:
    """Moves <water> & more."""

    def start(self):
        """strat(speed, [mode]) - starts the pump - at once"""

    def stop(self):
        """Ends it"""

    @property
    def speed(self):
        """Turns per minute [RW]"""

    @property
    def name(self):
        """Its name"""

    def _hidden(self):
        """not for users"""


def module():
    made = types.ModuleType("plant")
    made.Machine = Pump  # under another name than its own
    made.fast = 3
    made.helper = unittest
    return made


class PythonPages(unittest.TestCase):
    def test_pages_are_the_index_and_one_for_each_type(self):
        self.assertEqual(list(pythonpages.pages(module())), ["index.html", "Machine.html"])

    def test_function_has_its_own_name_and_the_documented_arguments(self):
        page = pythonpages.pages(module())["Machine.html"]
        self.assertIn('<a name="start"></a><code>start(speed, [mode])</code></td><td>starts the pump - at once</td>', page)
        self.assertIn("<code>stop()</code></td><td>Ends it</td>", page)

    def test_attribute_has_its_access(self):
        page = pythonpages.pages(module())["Machine.html"]
        self.assertIn("<code>speed</code></td><td>read and write</td><td>Turns per minute</td>", page)
        self.assertIn("<code>name</code></td><td>read</td><td>Its name</td>", page)

    def test_texts_are_escaped_and_hidden_members_left_out(self):
        page = pythonpages.pages(module())["Machine.html"]
        self.assertIn("Moves &lt;water&gt; &amp; more.", page)
        self.assertNotIn("hidden", page)

    def test_index_links_types_and_lists_constants(self):
        page = pythonpages.pages(module())["index.html"]
        self.assertIn('<a href="Machine.html">Machine</a>', page)
        self.assertIn("<code>fast</code></td><td>3</td>", page)
        self.assertNotIn("helper", page)

    def test_contents_list_all_pages(self):
        root = xml.etree.ElementTree.fromstring(pythonpages.contents(module()))
        self.assertEqual([page.get("path") for page in root.iter("page")],
                         ["html/python/index.html", "html/python/Machine.html"])

    def test_module_without_types_has_an_index_only(self):
        self.assertEqual(list(pythonpages.pages(types.ModuleType("empty"))), ["index.html"])


if __name__ == "__main__":
    unittest.main()
