<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>12</gain_db>
					<frequency_hz>-5</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>LoShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>12</gain_db>
					<frequency_hz>-5</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>HiShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>12</gain_db>
					<frequency_hz>-5</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>LoShelfEQ2</type>
				<name></name>
				<param_list>
					<gain_db>12</gain_db>
					<frequency_hz>-5</frequency_hz>
					<q_factor>4</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="5">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>HiShelfEQ2</type>
				<name></name>
				<param_list>
					<gain_db>-12</gain_db>
					<frequency_hz>-5</frequency_hz>
					<q_factor>4</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="6">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>-5</frequency_hz>
					<q_factor>10</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="7">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name></name>
				<param_list>
					<frequency_hz>-5</frequency_hz>
					<q_factor>10</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="8">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>2ndOrdBandpass</type>
				<name></name>
				<param_list>
					<frequency_hz>-5</frequency_hz>
					<bandwidth_oct>0.02</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="9">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>2ndOrdBandReject</type>
				<name></name>
				<param_list>
					<frequency_hz>-5</frequency_hz>
					<bandwidth_oct>0.02</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="10">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>4HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>12</gain_db>
					<frequency_hz>-5</frequency_hz>
					<harmonic_components>fundamental,odd,even</harmonic_components>
					<bandwidth_oct>0.005</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="11">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-12</gain_db>
					<frequency_hz>-5</frequency_hz>
					<harmonic_components>fundamental,odd,even</harmonic_components>
					<bandwidth_oct>0.005</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
