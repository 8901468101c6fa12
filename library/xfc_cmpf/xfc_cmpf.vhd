-- Compares two IEEE singles: equal, not equal, less, less or equal, greater, greater or equal for relation 0 to 5.
-- Exact. -0 equals +0, subnormal numbers are zeros; a nan is not equal to anything and nothing else.
--   step halves:  both halves of exponent and fraction, nan and zero
--   step relate:  the relation from what the halves and the signs say
-- Latency 1 cycle: a register behind the last step.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_cmpf is
  generic (relation : natural);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic);
end xfc_cmpf;

architecture rtl of xfc_cmpf is
  constant exponent_bits : positive := 8;
  constant fraction_bits : positive := 23;
  constant halves_border : natural := 0;

  -- halves
  signal marks_d, marks : std_logic_vector(8 downto 0);   -- signs, nan, both zero, halves

  -- relate
  signal below, same, unordered, equal, less : std_logic;
  signal holds_d, holds : std_logic_vector(0 downto 0);
begin
  assert relation <= 5 report "xfc_cmpf: relation is 0 to 5" severity failure;

  -- halves
  halves : entity work.xfc_ieee_halves generic map (exponent_bits, fraction_bits) port map (aa, bb, marks_d);

  halves_0 : entity work.xfc_register generic map (9, halves_border) port map (sysclk, enable, marks_d, marks);

  -- relate
  unordered <= marks(6) or marks(5);
  relate_below : entity work.xfc_ieee_below port map (marks(8 downto 7), marks(3 downto 0), below, same);
  equal <= not unordered and (marks(4) or same);
  less <= not unordered and not marks(4) and below;
  relate_holds : entity work.xfc_relation generic map (relation) port map (unordered, equal, less, holds_d(0));

  relate_0 : entity work.xfc_register generic map (1, 1) port map (sysclk, enable, holds_d, holds);
  cc <= holds(0);
end rtl;
